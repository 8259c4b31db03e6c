// From key to diagnostics: a page of 500 lines with ten includes, with sample data and all rules, in a large project.
const assert = require('node:assert');
const fs = require('node:fs');
const { test } = require('node:test');
const { Client } = require('./client');

const EDITS = 50;
const LIMIT = 100;

/** The processor time of a process so far, in milliseconds: the machine may be busy with other things. */
function processorTime({ pid }) {
    const [user, system] = fs.readFileSync(`/proc/${pid}/stat`, 'utf8').split(') ')[1].split(' ').slice(11, 13);
    return (Number(user) + Number(system)) * 10;
}

test(`diagnostics follow a key within ${LIMIT} ms`, async () => {
    const section = i => `<section class="c${i}">\n<h2>{htmlspecialchars s${i}::title}</h2>\n{dynamic row${i},s${i}::rows}\n`
        + `{optional row${i}::*::new}<b>new</b>{/optional}\n<p title="{htmlspecialchars row${i}::*::name}">ü 😀</p>\n`
        + `${i < 10 ? `{include part${i}.tpl}` : ''}\n{/dynamic}\n{s${i}::text 'none'}\n</section>\n`;
    const files = {
        'template.json': '{"data": {"*": "data.json"}, "security": true}',
        'page.tpl': Array.from({ length: 55 }, (_, i) => section(i)).join(''),
    };
    const rows = [{ new: true, name: 'A' }, { name: 'B' }];
    files['data.json'] = JSON.stringify(Object.fromEntries(
        Array.from({ length: 55 }, (_, i) => [`s${i}`, { title: 'T', text: 'x', rows }])));
    for (let i = 0; i < 1000; i++) {
        files[i < 10 ? `part${i}.tpl` : `pages/${i}.tpl`] = `{include part${i % 10}a.tpl}\n${'<p>{htmlspecialchars *::name}</p>\n'.repeat(20)}`;
    }
    const client = await Client.start(files);
    await client.open('page.tpl');
    await client.findings('page.tpl');
    const before = processorTime(client.process);
    for (let i = 0; i < EDITS; i++) {
        const place = { line: (i * 97) % 490, character: 0 };
        await client.change('page.tpl', [{ range: { start: place, end: place }, text: `{new${i}}` }]);
        assert.ok((await client.findings('page.tpl')).length > i);
    }
    const time = (processorTime(client.process) - before) / EDITS;
    assert.ok(time < LIMIT, `${time} ms`);
    assert.equal(await client.stop(), 0);
});
