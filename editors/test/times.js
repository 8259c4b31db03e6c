// Prints how long people wait for the language server: in a small project and in one of 5,000 files.
const fs = require('node:fs');
const { performance } = require('node:perf_hooks');
const { Client, processorTime } = require('./client');
const { page, site } = require('./projects');

const EDITS = 200;

const ms = time => `${time.toFixed(1)} ms`;

function memory({ pid }) {
    return `${Math.round(/VmHWM:\s+(\d+)/.exec(fs.readFileSync(`/proc/${pid}/status`, 'utf8'))[1] / 1024)} MB at most`;
}

/** From a key to the diagnostics of the text with it; a key in ten stands in an include tag. */
async function keys(client, name, lines) {
    const times = [];
    const before = processorTime(client.process);
    for (let i = 0; i < EDITS; i++) {
        const place = { line: (i * 97) % lines, character: 0 };
        const text = i % 10 ? `{new${i}}` : '{include x}';
        const begin = performance.now();
        await client.change(name, [{ range: { start: place, end: place }, text }]);
        await client.findings(name);
        times.push(performance.now() - begin);
    }
    times.sort((a, b) => a - b);
    const processor = (processorTime(client.process) - before) / EDITS;
    return `median ${ms(times[EDITS / 2])}, worst ${ms(times[EDITS - 1])} (processor ${ms(processor)})`;
}

async function measure(what, files, position, opened) {
    const begin = performance.now();
    const client = await Client.start(files);
    const written = performance.now();
    const [[first]] = opened;
    await client.open(first);
    await client.findings(first);
    console.log(what);
    console.log(`  from opening a page to its diagnostics, project read: ${ms(performance.now() - written)} (processor, with the start: `
        + `${ms(processorTime(client.process))}), ${memory(client.process)}`);
    const asked = performance.now();
    const found = await client.request('textDocument/references', first, { position, context: { includeDeclaration: false } });
    console.log(`  all ${found.length} references to a value: ${ms(performance.now() - asked)}, ${memory(client.process)}`);
    for (const [name, lines, which] of opened) {
        name === first || await client.open(name);
        await client.findings(name);
        console.log(`  from key to diagnostics, ${which}: ${await keys(client, name, lines)}`);
    }
    await client.stop();
}

(async () => {
    await measure('a small project', page(20), { line: 1, character: 26 }, [['page.tpl', 490, 'a page of 500 lines with ten includes']]);
    await measure('5,000 files', site(5000), { line: 3, character: 38 }, [
        ['pages/0/0.tpl', 20, 'a page with two includes'],
        ['parts/0.tpl', 10, 'a partial of 17 pages'],
    ]);
})();
