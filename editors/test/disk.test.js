// Random edits, while files on the disk change as well: templates are made, deleted, moved and written by others, texts are
// opened, closed and saved, the project file breaks and is mended. What the server says is what a fresh server says.
const assert = require('node:assert');
const fs = require('node:fs');
const path = require('node:path');
const { test } = require('node:test');
const { Client } = require('./client');

const STEPS = Number(process.env.TEMPLATE_STEPS ?? 400);
const SEED = Number(process.env.TEMPLATE_SEED ?? 11);
const STEPS_PER_CHECK = 20;

const NAMES = ['page0.tpl', 'page1.tpl', 'sub/part2.tpl', 'sub/part3.tpl', 'part4.tpl'];
const PIECES = [
    '{title}', '{row::*::name}', '{0::x}', '{dynamic row,rows}', '{/dynamic}', '{optional title}', '{/optional}', '{', '}', '{{',
    '\n', '\r\n', '😀', '\ufeff', 'ü', '<p title=', '{nowhere}', '{*}',
    ...NAMES.flatMap(name => [`{include ${name}}`, `{include ${path.basename(name)}}`]),
];
const PROJECTS = [
    '{}', '{"data": {"*": "data.json"}}', '{"data": {"*": "data.json"}, "security": true}', '{"includePath": [".", "sub"]}',
    '{"warnings": {"integer-index": "off"}}', null,
];
const DATA = ['{"title": "T", "rows": [{"name": "A"}]}', '{"rows": []}', '{"title": "T"}'];

/** Numbers that are the same in each run. */
function random(seed) {
    let state = seed;
    return below => {
        state = (Math.imul(state, 1103515245) + 12345) >>> 0;
        return Math.floor(((state >>> 8) / 2 ** 24) * below);
    };
}

const shown = news => (news?.diagnostics ?? []).map(({ range: { start, end }, code, severity, message }) =>
    `${start.line}:${start.character}-${end.line}:${end.character} ${severity} ${code ?? message.split('\n')[0]}`).sort();

test(`${STEPS} steps, here and on the disk`, async () => {
    const below = random(SEED);
    const pick = list => list[below(list.length)];
    const client = await Client.start({
        'template.json': PROJECTS[1], 'data.json': DATA[0], ...Object.fromEntries(NAMES.map(name => [name, pick(PIECES)])),
    }, { workspace: { didChangeWatchedFiles: { dynamicRegistration: true } } });
    const texts = new Map();
    const file = name => path.join(client.root, name);
    const changedFiles = names => client.notify('workspace/didChangeWatchedFiles', {
        changes: names.map(name => ({ uri: client.uri(name), type: fs.existsSync(file(name)) ? 2 : 3 })),
    });
    const write = async (name, text) => {
        text === null ? fs.rmSync(file(name), { force: true }) : fs.writeFileSync(file(name), text);
        await changedFiles([name]);
    };
    const edited = text => {
        const [from, to] = [below(text.length + 1), below(text.length + 1)].sort((a, b) => a - b);
        const isLong = text.length > 300 || below(4) === 0;
        return (text.slice(0, from) + pick(PIECES) + text.slice(isLong ? to : from)).replace(/[\uD800-\uDBFF](?![\uDC00-\uDFFF])|(?<![\uD800-\uDBFF])[\uDC00-\uDFFF]/g, '');
    };
    const steps = [
        async name => {
            if (texts.has(name)) {
                await client.close(name);
                texts.delete(name);
            } else {
                texts.set(name, fs.existsSync(file(name)) ? fs.readFileSync(file(name), 'utf8') : '');
                await client.open(name, texts.get(name));
            }
        },
        async name => {
            if (texts.has(name)) {
                await write(name, texts.get(name));
                await client.notify('textDocument/didSave', { textDocument: { uri: client.uri(name) } });
            }
        },
        name => write(name, below(2) ? null : `${pick(PIECES)}${pick(PIECES)}`),
        async name => {
            const other = pick(NAMES);
            if (fs.existsSync(file(name))) {
                fs.renameSync(file(name), file(other));
                await changedFiles([name, other]);
            }
        },
        () => write('template.json', pick([...PROJECTS, '{"data": {', '{"data": {"*": "none.json"}}'])),
        () => write('data.json', pick([...DATA, '{"title": ', '5'])),
    ];
    let compared = 0;
    for (let i = 1; i <= STEPS; i++) {
        const name = pick(NAMES);
        if (below(3) && texts.has(name)) {
            texts.set(name, edited(texts.get(name)));
            await client.change(name, texts.get(name));
        } else {
            await pick(steps)(name);
        }
        if (i % STEPS_PER_CHECK) {
            continue;
        }
        // Broken settings leave what was there before, which a fresh server can't know.
        await write('template.json', pick(PROJECTS));
        await write('data.json', pick(DATA));
        const fresh = await Client.start(client.root);
        for (const [each, text] of texts) {
            await fresh.open(each, text);
        }
        for (const each of texts.keys()) {
            const wanted = shown({ diagnostics: await settled(fresh, each) });
            await client.findings(each, found => shown({ diagnostics: found }).join() === wanted.join()).catch(() => {
                assert.deepEqual(shown(client.diagnostics.get(client.uri(each))), wanted,
                    `seed ${SEED}, step ${i}, ${each} in ${client.root}: ${JSON.stringify([...texts])}`);
            });
            compared += wanted.length;
        }
        assert.equal(await fresh.stop(), 0);
    }
    assert.ok(compared > STEPS / 10, `only ${compared} findings were compared`);
    assert.equal(await client.stop(), 0);
});

/** The findings of a text once the server has nothing more to do: it answers in its spare time only. */
async function settled(client, name) {
    await client.findings(name);
    for (let last = ''; ;) {
        await new Promise(resolve => setTimeout(resolve, 50));
        await client.request('textDocument/codeAction', name, {
            range: { start: { line: 0, character: 0 }, end: { line: 0, character: 0 } }, context: { diagnostics: [] } });
        const now = JSON.stringify(shown(client.diagnostics.get(client.uri(name))));
        if (now === last) {
            return client.diagnostics.get(client.uri(name)).diagnostics;
        }
        last = now;
    }
}
