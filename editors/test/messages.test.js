// What the server answers, message by message, in tables: text with the cursor at "|", and what is expected there.
const assert = require('node:assert');
const fs = require('node:fs');
const path = require('node:path');
const { pathToFileURL } = require('node:url');
const { before, test } = require('node:test');
const { Client, marked, range } = require('./client');

const files = {
    'template.json': JSON.stringify({
        pages: ['pages'], includePath: ['pages', '.'], data: { 'pages/*': 'data.json' },
    }),
    'data.json': JSON.stringify({
        title: 'Tea & more',
        user: { name: 'Ann', 'full name': 'no' },
        rows: [{ name: 'A', tags: [{ text: 'new' }] }, { name: 'B', price: 2 }],
        found: { num: [{ id: 7 }], total: 1 },
    }),
    'pages/shop.tpl': '{include parts/head.tpl}\n{dynamic row,rows}\n  {include parts/row.tpl}\n{/dynamic}\n',
    'pages/other.tpl': '{dynamic row,rows}{include parts/row.tpl}{row::*::name}{/dynamic}{title}{user::name}',
    'parts/head.tpl': '<h1>{title}</h1>{user::name}',
    'parts/row.tpl': '<p>{row::*::name}{dynamic tag,row::*::tags}{tag::*::text}{*::text}{/dynamic}</p>',
};
const capabilities = {
    textDocument: { completion: { completionItem: { snippetSupport: true } }, rename: { prepareSupport: true } },
    window: { workDoneProgress: true },
    workspace: { didChangeWatchedFiles: { dynamicRegistration: true } },
};

let client;
before(async () => {
    client = await Client.start(files, capabilities);
});

let number = 0;

/** Opens a new text and asks something at its mark. */
async function ask(method, text, more = {}, name = `pages/text${++number}.tpl`) {
    const [plain, position] = marked(text);
    await client.open(name, plain);
    try {
        return await client.request(method, name, { position, context: {}, ...more });
    } finally {
        await client.close(name);
    }
}

/** "file line:character-line:character" for a place in one of the files; the text that was asked about is "". */
const place = ({ uri, range: where }) =>
    `${/text\d+\.tpl$/.test(uri) ? '' : path.basename(uri)} ${range(where)}`.trim();

/** The same for a key of the sample data, which `text` begins. */
function key(text) {
    const start = files['data.json'].indexOf(`"${text}`);
    return `data.json 0:${start}-0:${files['data.json'].indexOf('"', start + 1) + 1}`;
}

async function table(rows, asked) {
    for (const [text, expected] of rows) {
        assert.deepEqual([text, await asked(text)], [text, expected]);
    }
}

test('ways: includes, loops, opening and closing tags', () => table([
    ['{include parts/|head.tpl}', ['head.tpl 0:0-0:0']],
    ['{include nowhere|.tpl}', []],
    ['{dynamic r,rows}\n{r|::*::name}{/dynamic}', ['0:0-0:16']],
    ['{dynamic r,rows}{dynamic rows}{*|}{/dynamic}{/dynamic}', ['0:16-0:30']],
    ['{dynamic r,rows}{/dyn|amic}', ['0:0-0:16']],
    ['{opt|ional title}\n{/optional}', ['1:0-1:11']],
    ['{other|::*}', []],
    ['{user::na|me}', [key('name":"Ann')]],
    ['{dynamic r,ro|ws}{/dynamic}', [key('rows')]],
    ['{dynamic r,rows}{dynamic r::*::tags}{*::te|xt}{/dynamic}{/dynamic}', [key('text')]],
    ['{dynamic r,found}{r::*::i|d}{/dynamic}', [key('id')]],
    ['{dynamic r,rows}{r::*::no|ne}{/dynamic}', ['0:0-0:16']],
    ['{no|ne}', []],
    ['no tag | here', []],
], async text => (await ask('textDocument/definition', text)).map(place)));

test('a name in a partial leads to the loops of all pages that include it', async () => {
    const text = files['parts/row.tpl'].replace('row::', 'r|ow::');
    const found = await ask('textDocument/definition', text, {}, 'parts/row.tpl');
    assert.deepEqual(found.map(place).sort(), ['other.tpl 0:0-0:18', 'shop.tpl 1:0-1:18']);
});

test('references: a value and a file across the project, and who includes this one', async () => {
    const everywhere = async (text, name, includeDeclaration = false) =>
        (await ask('textDocument/references', text, { context: { includeDeclaration } }, name)).map(place).sort();
    const titles = ['head.tpl 0:5-0:10', 'new.tpl 0:1-0:6', 'other.tpl 0:66-0:71'];
    assert.deepEqual(await everywhere('{tit|le}', 'pages/new.tpl'), titles);
    assert.deepEqual(await everywhere('{tit|le}', 'pages/new.tpl', true), [key('title'), ...titles]);
    assert.deepEqual(await everywhere('{dynamic r,rows}{r|::*}{/dynamic}', 'pages/new.tpl'), ['new.tpl 0:17-0:18']);
    // from the sample data: an element of a list is what a loop finds there
    assert.deepEqual(await everywhere(files['data.json'].replace('name":"A"', 'na|me":"A"'), 'data.json'),
        ['other.tpl 0:50-0:54', 'row.tpl 0:12-0:16']);
    assert.deepEqual(await everywhere(files['data.json'].replace('A"', 'A|"'), 'data.json'), []);
    assert.deepEqual(await everywhere('{user::na|me}{user}', 'pages/new.tpl'),
        ['head.tpl 0:23-0:27', 'new.tpl 0:7-0:11', 'other.tpl 0:79-0:83']);
    assert.deepEqual(await everywhere('{dynamic x,rows}{x::*::na|me}{*::name}{/dynamic}{name}', 'pages/new.tpl'),
        ['new.tpl 0:23-0:27', 'new.tpl 0:32-0:36', 'other.tpl 0:50-0:54', 'row.tpl 0:12-0:16']);
    assert.deepEqual(await everywhere('{include parts/ro|w.tpl}', 'pages/new.tpl'),
        ['new.tpl 0:9-0:22', 'other.tpl 0:27-0:40', 'shop.tpl 2:11-2:24']);
    assert.deepEqual(await everywhere(files['parts/row.tpl'].replace('<p>', '<|p>'), 'parts/row.tpl'),
        ['other.tpl 0:27-0:40', 'shop.tpl 2:11-2:24']);
});

test('rename: in the include, and in the other pages that share it', async () => {
    const text = files['pages/shop.tpl'].replace('dynamic row', 'dynamic r|ow');
    const rename = newName => ask('textDocument/rename', text, { newName }, 'pages/shop.tpl');
    const { changes } = await rename('item');
    const places = Object.entries(changes).flatMap(([uri, edits]) => edits.map(edit => place({ uri, ...edit })));
    assert.deepEqual(places.sort(),
        ['other.tpl 0:42-0:45', 'other.tpl 0:9-0:12', 'row.tpl 0:30-0:33', 'row.tpl 0:4-0:7', 'shop.tpl 1:9-1:12']);
    for (const name of ['tag', '', 'a b', 'a,b', 'a::b', '*', '}', '[*]']) {
        await assert.rejects(rename(name), /can't be the name|a loop "tag" already/, name);
    }
    await assert.rejects(ask('textDocument/prepareRename', '{tit|le}'), /only the names of loops/);
    assert.equal(range(await ask('textDocument/prepareRename', '{dynamic a|bc,rows}{/dynamic}')), '0:9-0:12');
});

test('highlight: both tags of a block; what means the same loop or value', () => table([
    ['{opti|onal title}{title}{/optional}', ['0:0-0:16', '0:23-0:34']],
    ['{tit|le} {user::title} {htmlspecialchars title}', ['0:1-0:6', '0:40-0:45']],
    ['{dynamic r|,rows}{r::*}{*}{dynamic x,r::*::tags}{*}{/dynamic}{/dynamic}', ['0:9-0:10', '0:17-0:18', '0:23-0:24', '0:36-0:37']],
], async text => (await ask('textDocument/documentHighlight', text)).map(each => range(each.range))));

test('completion', () => table([
    // the closing tag that is due comes first
    ['{dynamic rows}{optional title}{|', ['/optional}', '/dynamic}', '*', '[*]', 'title', 'user', 'rows', 'found']],
    ['{dynamic rows}{/|}', ['/dynamic']],
    ['{htmlspecialchars user::|}', ['name']],
    ['{user::|', ['name']],
    ['{title us|', ['title', 'user', 'rows', 'found']],
    ['{dynamic r,rows}{htmlspecialchars r::*::|', ['name', 'tags', 'price']],
    ['{dynamic r,rows}{dynamic r::*::tags}{htmlspecialchars *::|', ['text']],
    ['{dynamic found}{*::|', ['id']],
    ['{dynamic r,rows}{dynamic |', ['*', '[*]', 'r::*', 'r::[*]', 'title', 'user', 'rows', 'found']],
    ['{dynamic r,rows}{optional r::|', ['*', '[*]']],
    ['{optional user::name |', ['Ann']],
    ['{include |}', ['other.tpl', 'shop.tpl', 'pages/', 'parts/']],
    ['{include parts/|', ['head.tpl}', 'row.tpl}']],
    ["{title 'a |", []],
    ['{{|', []],
    ['{ |', []],
], async text => {
    const { items } = await ask('textDocument/completion', text);
    return items.filter(item => item.kind !== 14 || item.label.startsWith('/')).map(item => item.textEdit.newText);
}));

test('snippets are whole tags, in and between tags', async () => {
    const snippet = async text => (await ask('textDocument/completion', text)).items.find(item => item.label === 'dynamic');
    for (const [text, start, from] of [['dyn|', '{', 0], ['{dyn|', '', 1]]) {
        const item = await snippet(text);
        assert.equal(item.textEdit.newText, `${start}dynamic \${1:name},\${2:list}}$0{/dynamic}`);
        assert.deepEqual([item.insertTextFormat, range(item.textEdit.range)], [2, `0:${from}-0:${text.length - 1}`]);
    }
});

test('hover: meaning and value', async () => {
    for (const [text, expected] of [
        ['{tit|le}', /^A value of the data\.\n\n`title` is `"Tea & more"`$/],
        ['{dynamic r,rows}{r::*::na|me}{/dynamic}', /element of `\{dynamic r,rows\}` \(text.*line 1\)\.\n\n`rows::\*::name` is `"A"`, `"B"`/],
        ['{dynamic rows}{[|*]}{/dynamic}', /the key of .*`rows::\[\*\]` is `0`, `1`/s],
        ['{include parts/he|ad.tpl}', /^Includes `parts\/head\.tpl`\.$/],
        ['{opti|onal title}{/optional}', /exists and is true/],
        ['{optional title}\n{/opt|ional}', /Closes `\{optional title\}` of line 1/],
    ]) {
        assert.match((await ask('textDocument/hover', text)).contents.value, expected);
    }
    assert.equal(await ask('textDocument/hover', 'no |tag'), null);
});

test('outline and folding follow the blocks', async () => {
    const text = '{dynamic r,rows}\n{optional title}\n{include a.tpl}\n\n{/optional}\n{/dynamic}|';
    const outline = symbols => symbols.map(each => [each.name, range(each.range), ...outline(each.children)]);
    assert.deepEqual(outline(await ask('textDocument/documentSymbol', text)),
        [['r,rows', '0:0-5:10', ['title', '1:0-4:11', ['a.tpl', '2:0-2:15']]]]);
    assert.deepEqual((await ask('textDocument/foldingRange', text)).map(each => [each.startLine, each.endLine]),
        [[0, 4], [1, 3]]);
    const deep = '{optional a}'.repeat(3000) + '{/optional}'.repeat(3000);
    assert.ok(JSON.stringify(await ask('textDocument/documentSymbol', deep + '|')).length > 100000);
});

test('findings: places in each encoding and at each kind of line end, after changes of parts', async () => {
    const text = 'ä😀\t{0::x}\r\n{dynamic rows}\r{/dynamic}\n€{/optional}';
    for (const [encodings, expected] of [
        [['utf-16'], ['0:5-0:9', '3:1-3:12']],
        [['utf-8', 'utf-16'], ['0:8-0:12', '3:3-3:14']],
        [['utf-32'], ['0:5-0:9', '3:1-3:12']],
    ]) {
        const other = await Client.start({}, { general: { positionEncodings: encodings } });
        await other.open('page.tpl', text);
        assert.deepEqual((await other.findings('page.tpl')).map(each => range(each.range)), expected);
        const end = Number(expected[0].split(/[:-]/)[3]) + 1;
        const at = (line, from, to = from) => ({ start: { line, character: from }, end: { line, character: to } });
        await other.change('page.tpl', [
            { range: at(0, end - 6, end), text: '' },
            { range: { start: { line: 2, character: 99 }, end: { line: 3, character: 0 } }, text: '' },
            { range: at(99, 0), text: '{1::y}' },
        ]);
        const places = (await other.findings('page.tpl')).map(each => range(each.range));
        const [, column] = expected[1].split(/[:-]/).map(Number);
        assert.deepEqual(places, [`2:${10 + column}-2:${21 + column}`, `2:${22 + column}-2:${26 + column}`]);
        assert.equal(await other.stop(), 0);
    }
});

test('findings: in files that are not open, as an editor would show them', async () => {
    const latin = text => Buffer.from(text, 'latin1');
    const other = await Client.start({
        'page.tpl': '{include mark.tpl}{include latin.tpl}{include both.tpl}',
        'mark.tpl': '\ufeffü{0::x}\n😀{1::x}',
        'latin.tpl': latin('Größe\xa0\xbb {0::x}\r\nö{1::x}'),
        'both.tpl': Buffer.concat([latin('\xf6'), Buffer.from('😀ü{0::x}\r\t{1::x}')]),
    });
    await other.open('page.tpl');
    for (const [name, expected] of [
        ['mark.tpl', ['0:2-0:6', '1:3-1:7']], ['latin.tpl', ['0:9-0:13', '1:2-1:6']], ['both.tpl', ['0:5-0:9', '1:2-1:6']],
    ]) {
        const found = await other.findings(name, all => all.length > 1);
        assert.deepEqual([name, ...found.filter(each => each.code === 'integer-index').map(each => range(each.range))], [name, ...expected]);
    }
    assert.equal(await other.stop(), 0);
});

test('findings: an include shows its own, inside the loops of its pages; unsaved texts of all files count', async () => {
    const names = async (name, of = client) => (await of.findings(name)).map(each => each.code ?? each.message);
    const other = await Client.start({
        'page.tpl': '{dynamic row,rows}{include part.tpl}{/dynamic}',
        'part.tpl': '{row::*}{0::x}',
        'sub/template.json': '{"warnings": {"integer-index": "error"}, "names": ["*.page"]}',
        'sub/a.page': '{0::x}',
    });
    await other.open('page.tpl');
    assert.deepEqual([await names('page.tpl', other), await names('part.tpl', other)], [[], ['integer-index']]);
    await other.open('part.tpl');
    await other.change('page.tpl', '{include part.tpl}');
    assert.deepEqual(await names('page.tpl', other), []);
    await other.change('part.tpl', '{row::*}');
    assert.deepEqual(await names('part.tpl', other), ['unknown-loop']);
    await other.change('page.tpl', '{include part.tpl}{include missing.tpl}');
    assert.deepEqual(await names('page.tpl', other), ['missing-include']);
    fs.writeFileSync(path.join(other.root, 'missing.tpl'), '{/optional}');
    await other.notify('workspace/didChangeWatchedFiles', { changes: [] });
    assert.deepEqual(await names('missing.tpl', other), ['Unexpected closing optional tag']);
    await other.close('page.tpl');
    await other.change('part.tpl', '{row::*} ');
    await other.findings('missing.tpl', found => found.length === 0);
    assert.deepEqual(await names('part.tpl', other), []);

    // a folder of its own project, with its own rules
    await other.open('sub/a.page');
    assert.equal((await other.findings('sub/a.page'))[0].severity, 1);
    fs.writeFileSync(path.join(other.root, 'sub/template.json'), '{\n  "wornings": {}\n}');
    await other.notify('workspace/didChangeWatchedFiles', { changes: [] });
    const [broken] = await other.findings('sub/template.json');
    assert.match(broken.message, /wornings/);
    assert.equal(broken.range.start.line, 1);
    assert.equal(await other.stop(), 0);
});

test('project file and sample data count as they are in the editor; a broken one leaves the last that was good', async () => {
    const other = await Client.start({
        'template.json': '{"includePath": ["parts"], "data": {"*": "data.json"}}', 'data.json': '{"title": "T"}',
        'page.tpl': '{title}{include part.tpl}', 'parts/part.tpl': '', 'parts/other.tpl': '',
    });
    await other.open('page.tpl');
    assert.deepEqual(await other.findings('page.tpl'), []);
    await other.open('data.json');
    await other.change('data.json', '{"tütle": 1}');
    assert.equal((await other.findings('page.tpl', found => found.length === 1))[0].code, 'missing-value');
    const at = { textDocument: { uri: other.uri('data.json') }, position: { line: 0, character: 3 } };
    for (const method of ['completion', 'hover', 'documentSymbol', 'foldingRange', 'codeAction', 'rename', 'definition']) {
        assert.equal(await other.connection.sendRequest(`textDocument/${method}`, at), null, method);
    }
    assert.deepEqual(await other.request('textDocument/references', 'data.json', at), []);
    await other.change('data.json', '{"title": 1}');
    await other.findings('page.tpl', found => found.length === 0);

    await other.open('template.json');
    await other.change('template.json', '{"😀": 1,\n"includePath": ["parts"]}');
    assert.deepEqual((await other.findings('template.json')).map(each => range(each.range)), ['0:1-0:2']);
    await other.change('template.json', '{"includePath": ["parts"], "data": {"😀": "gone", ');
    assert.deepEqual((await other.findings('template.json')).map(each => range(each.range)), ['0:50-0:50']);
    await other.change('page.tpl', '{title} {include part.tpl}{include nowhere.tpl}');
    assert.deepEqual((await other.findings('page.tpl')).map(each => each.code), ['missing-include']);
    await other.change('template.json', '{"includePath": ["."]}');
    assert.deepEqual(await other.findings('template.json'), []);
    await other.findings('page.tpl', found => found.length === 2);
    await other.close('template.json');
    await other.findings('page.tpl', found => found.length === 1);
    assert.equal(await other.stop(), 0);
});

test('code actions mend, turn off and leave alone', async () => {
    const actions = async (text, more) => (await ask('textDocument/codeAction', text, {
        range: { start: { line: 0, character: 15 }, end: { line: 0, character: 16 } },
        context: { diagnostics: [], ...more },
    }, 'pages/actions.tpl'));
    const wrong = '{dynamic r,rows} {optional [*] \'a\'}{/optional}{/dynamic}{dynamic r, rows}{/dynamic}|';
    const mend = async (edits, text) => edits.sort((a, b) => b.range.start.character - a.range.start.character)
        .reduce((all, edit) => all.slice(0, edit.range.start.character) + edit.newText + all.slice(edit.range.end.character), text);
    const all = (await actions(wrong)).find(each => each.kind === 'source.fixAll');
    assert.equal(await mend(Object.values(all.edit.changes)[0], wrong.replace('|', '')),
        '{dynamic r,rows} {optional [*] a}{/optional}{/dynamic}{dynamic r,rows}{/dynamic}');
    assert.deepEqual((await actions(wrong, { only: ['source'] })).map(each => each.kind), ['source.fixAll']);

    const [fix, off] = await actions('{dynamic row,  rows}{/dynamic}|');
    assert.equal(fix.title, 'Delete "  "');
    assert.equal(off.title, 'Turn off "blank-at-comma" in template.json');
    const [uri, [edit]] = Object.entries(off.edit.changes)[0];
    assert.equal(uri, client.uri('template.json'));
    const settings = JSON.parse(files['template.json'].slice(0, edit.range.start.character) + edit.newText
        + files['template.json'].slice(edit.range.end.character));
    assert.deepEqual(settings, { ...JSON.parse(files['template.json']), warnings: { 'blank-at-comma': 'off' } });
    assert.deepEqual(await actions('{title}|'), []);
});

test('an unsaved text without a file is a page as well; what is not escaped can be, or be vouched for', async () => {
    const other = await Client.start({ 'part.tpl': '{title}', 'template.json': '{"security": true}' });
    const uri = 'untitled:Untitled-1';
    const textDocument = { uri, languageId: 'template', version: 1, text: '{include part.tpl}{/dynamic}{title}' };
    await other.notify('textDocument/didOpen', { textDocument });
    assert.equal((await other.findings('part.tpl')).length, 1);
    assert.deepEqual(other.diagnostics.get(uri).diagnostics.map(each => range(each.range)), ['0:18-0:28', '0:28-0:35']);
    const found = await other.connection.sendRequest('textDocument/codeAction', {
        textDocument, range: { start: { line: 0, character: 30 }, end: { line: 0, character: 30 } }, context: { diagnostics: [] },
    });
    assert.deepEqual(found.map(({ title, edit }) => [title, Object.values(edit.changes)[0][0].newText.trim().slice(0, 28)]), [
        ['Escape with "htmlspecialchars"', '{htmlspecialchars title}'],
        ['Vouch for this value', '{optional}vouched{/optional}'],
        ['Turn off "unescaped-value" in template.json', '"warnings": {\n        "unesc'],
    ]);
    assert.equal(await other.stop(), 0);
});

test('a request can be called off; an unknown one, or one about nothing, is an error', async () => {
    const { CancellationTokenSource } = require('vscode-languageserver-protocol/node');
    const many = '{dynamic a,b}{a::*}{/dynamic}'.repeat(20000);
    await client.open('pages/many.tpl', many);
    const source = new CancellationTokenSource();
    const parameters = { textDocument: { uri: client.uri('pages/many.tpl') }, position: { line: 0, character: 9 } };
    const late = client.connection.sendRequest('textDocument/documentHighlight', parameters, source.token);
    source.cancel();
    await assert.rejects(late, { code: -32800 });
    await client.close('pages/many.tpl');
    await assert.rejects(client.request('textDocument/nonsense', 'pages/shop.tpl'), { code: -32601 });
    await assert.rejects(client.request('textDocument/hover', 'pages/none.tpl', { position: {} }), { code: -32803 });
    await assert.rejects(client.connection.sendRequest('textDocument/hover', { textDocument: 5 }), { code: -32602 });
});

test('the editor is asked to watch the files, and told of a long work', async () => {
    const other = await Client.start(
        Object.fromEntries(Array.from({ length: 300 }, (_, i) => [`p${i}.tpl`, '{include p1.tpl}{*}'.repeat(3000)])), capabilities);
    await other.open('p1.tpl');
    await other.findings('p1.tpl');
    const [, { registrations }] = other.asked.find(([method]) => method === 'client/registerCapability');
    const globs = registrations[0].registerOptions.watchers.map(each => each.globPattern);
    assert.ok(globs.includes('**/*.tpl') && globs.includes('**/template.json'));
    const kinds = other.asked.filter(([method]) => method === '$/progress').map(([, { value }]) => value.kind);
    assert.deepEqual(kinds.filter(kind => kind !== 'report'), ['begin', 'end']);
    assert.equal(await other.stop(), 0);
});

test('folders come and go', async () => {
    const other = await Client.start({ 'a/x.tpl': '{include y.tpl}', 'a/y.tpl': '', 'b/x.tpl': '{include y.tpl}' }, {}, { workspaceFolders: null });
    const folder = name => ({ uri: pathToFileURL(path.join(other.root, name)).href, name });
    await other.notify('workspace/didChangeWorkspaceFolders', { event: { added: [folder('a'), folder('b')], removed: [] } });
    await other.open('a/x.tpl');
    await other.open('b/x.tpl');
    assert.deepEqual(await other.findings('a/x.tpl'), []);
    assert.equal((await other.findings('b/x.tpl'))[0].code, 'missing-include');
    assert.equal(await other.stop(), 0);
});
