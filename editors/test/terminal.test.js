// Editors for the terminal, as Debian has them, with the configurations that the manual shows.
const assert = require('node:assert');
const { execFileSync } = require('node:child_process');
const fs = require('node:fs');
const path = require('node:path');
const { test } = require('node:test');
const { folder } = require('./client');

const manual = name => fs.readFileSync(path.join(process.env.TEMPLATE_DOCS, name), 'utf8');

/** Runs an editor in a folder with templates; the outcome is the last line of its output. */
function outcome(program, parameters, home, environment = {}) {
    const root = folder({
        'page.tpl': '{dynamic row,rows}\n{0::x}\n{include part.tpl}\n{/dynamic}\n',
        'part.tpl': '{row::*::name}{/optional}\n',
        'template.json': '{"data": {"*": "data.json"}}',
        'data.json': '{"title": "T", "user": {"name": "Ann"}, "rows": [{"name": "A"}]}',
    });
    const bin = folder({ template: `#!/bin/sh\nexec ${JSON.parse(process.env.TEMPLATE_COMMAND).join(' ')} "$@"\n` });
    fs.chmodSync(path.join(bin, 'template'), 0o755);
    const output = execFileSync(program, parameters, {
        cwd: root,
        env: { ...process.env, PATH: `${bin}:${process.env.PATH}`, XDG_CONFIG_HOME: home, XDG_STATE_HOME: home,
            XDG_DATA_HOME: home, XDG_CACHE_HOME: home, XDG_RUNTIME_DIR: home, HOME: home, ...environment },
        stdio: ['ignore', 'pipe', 'ignore'],
        timeout: 60000,
    }).toString();
    return { root, ...JSON.parse(output.trim().split('\n').at(-1)) };
}

test('Neovim shows findings, goes to an include, completes and renames', () => {
    const [, configuration] = manual('editors.md').match(/```lua\n(.*?)```/s);
    const home = folder({ 'nvim/init.lua': configuration });
    const { root, ...found } = outcome('nvim', ['--headless', '-S', path.join(__dirname, 'neovim.lua')], home);
    assert.deepEqual(found, {
        findings: ['1:1-5 integer-index', '1:1-5 missing-value'],
        definition: path.join(root, 'part.tpl'),
        include: ['0:14-25 Unexpected closing optional tag'],
        completion: ['name'],
        renamed: '{item::*::name}{/optional}',
    });
});

test('Emacs shows findings, goes to an include, completes and renames', () => {
    const [, configuration] = manual('editors.md').match(/```elisp\n(.*?)```/s);
    const home = folder({ 'init.el': configuration });
    const { root, ...found } = outcome('emacs', ['--batch', '-l', path.join(__dirname, 'emacs.el')], home,
        { TEMPLATE_CONFIGURATION: path.join(home, 'init.el') });
    assert.deepEqual(found, {
        findings: ['1:1-5 integer-index', '1:1-5 missing-value'],
        definition: 'part.tpl',
        include: ['0:14-25 Unexpected closing optional tag'],
        completion: ['name'],
        renamed: '{dynamic item,rows} {item::*::name}{/optional}',
    });
});
