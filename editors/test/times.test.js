// From key to diagnostics: a page of 500 lines with ten includes, with sample data and all rules, in a large project.
const assert = require('node:assert');
const { test } = require('node:test');
const { Client, processorTime } = require('./client');
const { page } = require('./projects');

const EDITS = 50;
const LIMIT = 100;

test(`diagnostics follow a key within ${LIMIT} ms`, async () => {
    const client = await Client.start(page(1000));
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
