// Thousands of random edits of several open texts: what the server says must be what a fresh check of these texts says.
// TEMPLATE_EDITS and TEMPLATE_SEED choose others.
const assert = require('node:assert');
const { execFileSync } = require('node:child_process');
const fs = require('node:fs');
const path = require('node:path');
const { test } = require('node:test');
const { Client, folder } = require('./client');

const EDITS = Number(process.env.TEMPLATE_EDITS ?? 2000);
const SEED = Number(process.env.TEMPLATE_SEED ?? 7);
/** A fresh check takes longer than an edit. */
const EDITS_PER_CHECK = 20;

/** Numbers that are the same in each run. */
function random(seed) {
    let state = seed;
    return below => {
        state = (Math.imul(state, 1103515245) + 12345) >>> 0;
        return Math.floor(((state >>> 8) / 2 ** 24) * below);
    };
}

const NAMES = ['page0.tpl', 'page1.tpl', 'part2.tpl', 'part3.tpl'];
const PIECES = [
    '{title}', '{htmlspecialchars user::name}', '{0::x}', '{missing', '}', '{', '{{', '}}', '\n', '\r\n', '\r', '\t', 'ü', '😀', '€',
    '{dynamic row,rows}', '{dynamic rows}', '{/dynamic}', '{rdynamic row, rows}', '{/rdynamic}', '{optional title}',
    '{!optional [*] \'a\'}', '{/optional}', '{row::*::name}', '{*}', '{[*]}', '<p title="', '">', '<script>', '</script>', '<style>a{{b:c}}</style>',
    'text', ' ', '{$title}', '{user.name}', '{if title}', '{include nowhere.tpl}',
];

/** Includes lead to later files only: a circle is reported where it is entered, and that depends on the page. */
const pieces = name => [...PIECES, ...NAMES.slice(NAMES.indexOf(name) + 1).map(other => `{include ${other}}`)];

const PROJECTS = {
    'without a project': {},
    'with data and security': {
        'template.json': '{"data": {"*": "data.json"}, "security": true}',
        'data.json': '{"title": "T", "user": {"name": "Ann"}, "rows": [{"name": "A"}, {"name": "B"}]}',
    },
};

/** The place of a byte in a text, as UTF-16 counts it. */
function position(text, offset) {
    const lines = Buffer.from(text).subarray(0, offset).toString().split(/\r\n?|\n/);
    return `${lines.length - 1}:${lines.at(-1).length}`;
}

for (const [what, more] of Object.entries(PROJECTS)) {
    test(`${EDITS} edits ${what}`, async () => {
        const below = random(SEED);
        const pick = list => list[below(list.length)];
        const texts = Object.fromEntries(NAMES.map(name => [name, '']));
        const client = await Client.start({ ...texts, ...more });
        const copy = folder({ ...texts, ...more });
        for (const name of NAMES) {
            await client.open(name);
        }
        let compared = 0;
        for (let i = 1; i <= EDITS; i++) {
            const name = pick(NAMES);
            const lines = texts[name].split(/\r\n?|\n/);
            const starts = [...texts[name].matchAll(/\r\n?|\n/g)].map(end => end.index + end[0].length);
            const place = () => {
                const line = below(lines.length);
                return { line, character: below(lines[line].length + 1) };
            };
            const offset = ({ line, character }) => (line === 0 ? 0 : starts[line - 1]) + character;
            let [start, end] = [place(), place()].sort((a, b) => offset(a) - offset(b));
            // Mostly something is written; a long text is cut.
            if (below(4) && texts[name].length < 1500) {
                end = start;
            }
            const text = below(5) ? pick(pieces(name)) : '';
            let [from, to] = [offset(start), offset(end)];
            // Editors cut no character in halves.
            const isInside = at => /[\uDC00-\uDFFF]/.test(texts[name][at] ?? '') || (texts[name][at] === '\n' && texts[name][at - 1] === '\r');
            if (isInside(from) || isInside(to)) {
                continue;
            }
            texts[name] = texts[name].slice(0, from) + text + texts[name].slice(to);
            await client.change(name, [{ range: { start, end }, text }]);
            if (i % EDITS_PER_CHECK) {
                continue;
            }
            const fresh = check(copy, texts);
            for (const each of NAMES) {
                const found = new Set((await client.findings(each)).map(({ range, code, severity, message }) =>
                    `${range.start.line}:${range.start.character}-${range.end.line}:${range.end.character} `
                        + `${severity === 1 ? 'error' : 'warning'} ${code ?? message.split('\n')[0]}`));
                assert.deepEqual([...found].sort(), fresh[each], `seed ${SEED}, edit ${i}, ${each}: ${JSON.stringify(texts)}`);
                compared += found.size;
            }
        }
        assert.ok(compared > EDITS / 4, `only ${compared} findings were compared`);
        assert.equal(await client.stop(), 0);
    });
}

/** What the checker says of these files, by file. */
function check(root, texts) {
    for (const [name, text] of Object.entries(texts)) {
        fs.writeFileSync(path.join(root, name), text);
    }
    const [program, ...first] = JSON.parse(process.env.TEMPLATE_COMMAND);
    let output;
    try {
        output = execFileSync(program, [...first, 'check', '--format', 'json', '.'], { cwd: root, stdio: ['ignore', 'pipe', 'inherit'] });
    } catch (error) {
        assert.equal(error.status, 1, 'the check failed');
        output = error.stdout;
    }
    const found = Object.fromEntries(Object.keys(texts).map(name => [name, new Set()]));
    for (const each of JSON.parse(output)) {
        const name = path.basename(each.file);
        const start = position(texts[name], each.offset);
        // The length counts characters.
        const rest = Buffer.from(texts[name]).subarray(each.offset).toString();
        const bytes = Buffer.byteLength([...rest].slice(0, each.length).join(''));
        found[name].add(`${start}-${position(texts[name], each.offset + bytes)} ${each.severity} ${each.name ?? each.message}`);
    }
    return Object.fromEntries(Object.entries(found).map(([name, all]) => [name, [...all].sort()]));
}
