// What no well-behaved client sends, ends that nobody announces, and texts that no author writes.
const assert = require('node:assert');
const { execFileSync } = require('node:child_process');
const { test } = require('node:test');
const { Client, start } = require('./client');

/** A server that is talked to byte by byte. */
class Raw {
    constructor() {
        this.process = start();
        this.process.stdin.on('error', () => {});
        this.output = Buffer.alloc(0);
        this.exited = new Promise(resolve => this.process.on('exit', (code, signal) => resolve(signal ?? code)));
        this.process.stdout.on('data', part => {
            this.output = Buffer.concat([this.output, part]);
        });
    }

    write(bytes) {
        this.process.stdin.write(bytes);
    }

    send(message) {
        this.write(frame({ jsonrpc: '2.0', ...message }));
    }

    /** The answer to a request with this id, when it has come. */
    async answer(id) {
        for (const until = Date.now() + 20000; Date.now() < until;) {
            let rest = this.output;
            for (let end; (end = rest.indexOf('\r\n\r\n')) >= 0;) {
                const length = Number(/Content-Length: (\d+)/.exec(rest.subarray(0, end).toString())[1]);
                const message = rest.subarray(end + 4, end + 4 + length);
                rest = rest.subarray(end + 4 + length);
                const answer = message.length === length ? JSON.parse(message.toString()) : {};
                if (answer.id === id && !answer.method) {
                    return answer;
                }
            }
            await new Promise(resolve => setTimeout(resolve, 20));
        }
        throw new Error(`no answer to ${id}: ${this.output}`);
    }
}

const frame = message => {
    const text = Buffer.from(typeof message === 'string' ? message : JSON.stringify(message));
    return Buffer.concat([Buffer.from(`Content-Length: ${text.length}\r\n\r\n`), text]);
};
const hello = { id: 1, method: 'initialize', params: { capabilities: {} } };

test('nonsense is refused, and the next message is understood', async () => {
    const server = new Raw();
    server.send({ id: 0, method: 'textDocument/hover', params: {} });
    assert.equal((await server.answer(0)).error.code, -32002);
    server.send(hello);
    assert.equal((await server.answer(1)).result.serverInfo.name, 'template');
    let id = 1;
    for (const nonsense of [
        'GET / HTTP/1.1\r\nHost: x\r\n\r\n',
        '\r\n\r\n\r\n\r\n',
        Buffer.from(Array.from({ length: 70000 }, (_, i) => (i * 31) & 255)),
        'Content-Length: twelve\r\n\r\n',
        'Content-Length: 99999999999999999999\r\n\r\n',
        'Content-Length: -5\r\n\r\n',
        frame('{'), frame('null'), frame('[]'), frame('"text"'), frame(''), frame('[{"id": 5, "method": "x"}]'),
        frame('{"id": {}, "method": "shutdown"}'), frame('{"id": 4}'), frame('{"method": 5, "id": 6}'),
        frame('{"id": 7, "method": "textDocument/hover", "params": 5}'),
        frame('{"method": "textDocument/didOpen", "params": {}}'),
        frame('{"method": "textDocument/didOpen", "params": {"textDocument": {"uri": "a\\u0000b", "text": "{", "version": "x"}}}'),
        frame('{"method": "textDocument/didChange", "params": {"textDocument": {"uri": "file:///none"}, "contentChanges": []}}'),
        frame('{"method": "workspace/didChangeWorkspaceFolders", "params": {"event": 5}}'),
        frame('{"method": "$/cancelRequest", "params": {"id": []}}'),
        frame(`${'['.repeat(3000)}${']'.repeat(3000)}`),
        // a message that was cut short: the next one is found in what it claimed
        'Content-Length: 60\r\n\r\n{"id": 8, "me',
    ]) {
        server.write(nonsense);
        id++;
        server.send({ id: `q${id}`, method: 'nothing/such' });
        assert.equal((await server.answer(`q${id}`)).error.code, -32601, String(nonsense).slice(0, 100));
    }
    assert.equal((await server.answer(7)).error.code, -32602);
    server.send({ id: 'end', method: 'shutdown' });
    assert.equal((await server.answer('end')).result, null);
    server.send({ id: 'late', method: 'textDocument/hover', params: {} });
    assert.equal((await server.answer('late')).error.code, -32600);
    server.send({ method: 'exit' });
    assert.equal(await server.exited, 0);
});

test('a message may come byte by byte', async () => {
    const server = new Raw();
    for (const byte of frame({ jsonrpc: '2.0', ...hello })) {
        server.write(Buffer.from([byte]));
        await new Promise(resolve => setImmediate(resolve));
    }
    assert.ok((await server.answer(1)).result);
    server.process.kill();
});

test('it ends with its editor: in the middle of a message, without a word, or when nobody reads', async () => {
    for (const [leave, status] of [
        [server => server.process.stdin.end(), 1],
        [server => server.process.stdin.end('Content-Length: 500\r\n\r\n{"jsonrpc"'), 1],
        [server => server.process.stdin.end(frame({ jsonrpc: '2.0', method: 'exit' })), 1],
        [server => {
            server.process.stdout.destroy();
            server.send({ id: 2, method: 'nothing/such' });
            server.send({ id: 3, method: 'nothing/such' });
        }, 1],
    ]) {
        const server = new Raw();
        server.send(hello);
        await server.answer(1);
        leave(server);
        assert.equal(await server.exited, status);
    }
});

test('kill -9 leaves nothing behind, and a new server goes on', async () => {
    const files = { 'page.tpl': '{include part.tpl}{/optional}', 'part.tpl': '{0::x}' };
    const first = await Client.start(files);
    await first.open('page.tpl');
    await first.findings('page.tpl');
    first.process.kill('SIGKILL');
    assert.equal(await first.exited, 'SIGKILL');
    assert.equal(execFileSync('find', [first.root, '-newer', `${first.root}/page.tpl`, '-type', 'f', '!', '-name', '*.tpl']).toString(), '');
    const second = await Client.start(first.root);
    await second.open('page.tpl');
    assert.equal((await second.findings('page.tpl')).length, 1);
    assert.equal(await second.stop(), 0);
});

test('broken and huge texts are answered like others', async () => {
    const client = await Client.start({ 'circle.tpl': '{include page.tpl}{include circle.tpl}', 'page.tpl': '' });
    await client.open('page.tpl', '');
    const at = { position: { line: 0, character: 3 }, context: { diagnostics: [] }, newName: 'x', range: {
        start: { line: 0, character: 0 }, end: { line: 1, character: 0 } } };
    const methods = ['definition', 'references', 'documentHighlight', 'completion', 'hover', 'documentSymbol', 'foldingRange', 'codeAction'];
    for (const [what, text, most] of [
        ['nothing', '', 2],
        ['one brace', '{', 2],
        ['a brace in a tag', '{a{b', 2],
        ['NUL bytes', 'a\0{b}\0', 2],
        ['half a surrogate', '{\ud83d}{/optional}', 2],
        ['braces', '{'.repeat(100001), 20],
        ['blocks that are never closed', '{dynamic a,b}'.repeat(3000), 20],
        ['deep blocks', `${'{optional a}'.repeat(20000)}${'{/optional}'.repeat(20000)}`, 30],
        ['one line of 1 MB', '{htmlspecialchars a}<p>'.repeat(45000), 30],
        ['1 MB in lines', '{htmlspecialchars a}{0::x}\n'.repeat(40000), 60],
        ['a circle of includes', '{include circle.tpl}', 5],
        ['one line of 1 MB beyond ASCII', '{htmlspecialchars a}ü😀'.repeat(40000), 30],
        ['marks and ends of lines', '\ufeff{a}\r\n\ufeff{b}\r{c}\u2028{/optional}\x85'.repeat(1000), 10],
        ['12 MB', 'x{a}'.repeat(3e6), 30],
        ['a page', '{title}{/optional}', 5],
    ]) {
        const begin = Date.now();
        await client.change('page.tpl', text);
        await client.findings('page.tpl');
        for (const method of methods) {
            await client.request(`textDocument/${method}`, 'page.tpl', at).catch(error => {
                // A text that is no template, or too large for one, is refused.
                assert.ok(error.code === -32803 && /NUL|12 MB/.test(what), `${what}, ${method}: ${error.message}`);
            });
        }
        assert.ok(Date.now() - begin < most * 1000, `${what}: ${Date.now() - begin} ms`);
    }
    assert.equal((await client.findings('page.tpl')).length, 1);
    assert.equal(await client.stop(), 0);
});
