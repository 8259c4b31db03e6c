// Tokenizes the sample as the editor does, and compares the scopes of the marked parts.
const assert = require('node:assert');
const fs = require('node:fs');
const path = require('node:path');
const test = require('node:test');
const oniguruma = require('vscode-oniguruma');
const textmate = require('vscode-textmate');

const here = (...names) => path.join(__dirname, '..', ...names);
const json = file => JSON.parse(fs.readFileSync(file, 'utf8'));
const manifest = json(here('package.json'));

/** Each line of `text` as [[text of the token, its scopes joined by blanks], ...]. */
async function tokens(text) {
    await oniguruma.loadWASM(fs.readFileSync(require.resolve('vscode-oniguruma/release/onig.wasm')).buffer);
    const grammars = here('node_modules/tm-grammars/grammars');
    const others = { 'text.html.basic': 'html', 'source.css': 'css', 'source.js': 'javascript' };
    const registry = new textmate.Registry({
        onigLib: Promise.resolve({
            createOnigScanner: patterns => new oniguruma.OnigScanner(patterns),
            createOnigString: string => new oniguruma.OnigString(string),
        }),
        loadGrammar: async scope => {
            const own = manifest.contributes.grammars.find(grammar => grammar.scopeName === scope);
            return own ? json(here(own.path)) : others[scope] ? json(`${grammars}/${others[scope]}.json`) : null;
        },
    });
    const grammar = await registry.loadGrammar('text.html.template');
    let stack = textmate.INITIAL;
    return text.split('\n').map(line => {
        const result = grammar.tokenizeLine(line, stack);
        stack = result.ruleStack;
        return result.tokens.map(token => [line.slice(token.startIndex, token.endIndex), token.scopes.join(' ')]);
    });
}

// In the sample, a line "~ text | scope" says: in the last line before it that is no such line, there is a token with
// this text and a scope that begins so; "~ text | -" says that this token belongs to no tag and no escape.
test('the sample has the scopes that it says', async () => {
    const sample = fs.readFileSync(path.join(__dirname, 'sample.tpl'), 'utf8').trimEnd().split('\n');
    const isRule = line => line.startsWith('~ ');
    const lines = await tokens(sample.filter(line => !isRule(line)).join('\n'));
    let number = -1;
    let checked = 0;
    for (const line of sample) {
        if (!isRule(line)) {
            number++;
            continue;
        }
        const [text, scope] = line.slice(2).split(' | ');
        const same = lines[number].filter(([token]) => token.trim() === text);
        const found = same.map(([, scopes]) => scopes);
        const fits = scopes => scope === '-'
            ? !/\.template(?= |$)/.test(scopes.replace('text.html.template', ''))
            : scopes.split(' ').some(each => each.startsWith(scope));
        assert.ok(found.some(fits), `${line}: there is ${JSON.stringify(same.length ? same : lines[number], null, 1)}`);
        checked++;
    }
    assert.ok(checked > 40, `only ${checked} rules`);
});

test('every tag of the example shop ends where it should', async () => {
    const folder = process.env.TEMPLATE_EXAMPLES;
    assert.ok(folder, 'TEMPLATE_EXAMPLES names the folder of the templates');
    const files = fs.readdirSync(folder).filter(file => file.endsWith('.tpl'));
    assert.ok(files.length > 5);
    for (const file of files) {
        const text = fs.readFileSync(path.join(folder, file), 'utf8');
        const all = (await tokens(text)).flat();
        const [found, ends] = ['begin', 'end'].map(side =>
            all.filter(([, scopes]) => scopes.includes(`punctuation.definition.tag.${side}.template`)));
        const expected = text.match(/\{(?=[^\s{])[^{}]*\}/g) ?? [];
        assert.deepEqual([file, found.length, ends.length], [file, expected.length, expected.length]);
    }
});

test('the problem matcher reads the output of the checker', () => {
    const pattern = manifest.contributes.problemMatchers[0].pattern;
    const output = fs.readFileSync(process.env.TEMPLATE_FINDINGS, 'utf8').split('\n');
    const found = output.map(line => line.match(new RegExp(pattern.regexp))).filter(Boolean)
        .map(match => [pattern.file, pattern.line, pattern.column, pattern.severity, pattern.code].map(i => match[i]));
    assert.deepEqual(found, [
        ['page.tpl', '1', '2', 'warning', 'keyword-prefix'],
        ['page.tpl', '2', '12', 'error', undefined],
    ]);
});
