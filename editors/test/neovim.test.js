// Neovim, as Debian has it, with the configuration that the manual's page on editors shows.
const assert = require('node:assert');
const { execFileSync } = require('node:child_process');
const fs = require('node:fs');
const path = require('node:path');
const { test } = require('node:test');
const { folder } = require('./client');

test('Neovim shows findings, goes to an include, completes and renames', () => {
    const root = folder({
        'page.tpl': '{dynamic row,rows}\n{0::x}\n{include part.tpl}\n{/dynamic}\n',
        'part.tpl': '{row::*::name}{/optional}\n',
        'template.json': '{"data": {"*": "data.json"}}',
        'data.json': '{"title": "T", "user": {"name": "Ann"}, "rows": [{"name": "A"}]}',
    });
    const bin = folder({ template: `#!/bin/sh\nexec ${JSON.parse(process.env.TEMPLATE_COMMAND).join(' ')} "$@"\n` });
    fs.chmodSync(path.join(bin, 'template'), 0o755);
    const [, configuration] = fs.readFileSync(process.env.TEMPLATE_MANUAL, 'utf8').match(/```lua\n(.*?)```/s);
    const home = folder({ 'nvim/init.lua': configuration });
    const output = execFileSync('nvim', ['--headless', '-S', path.join(__dirname, 'neovim.lua')], {
        cwd: root,
        env: { ...process.env, PATH: `${bin}:${process.env.PATH}`, XDG_CONFIG_HOME: home, XDG_STATE_HOME: home,
            XDG_DATA_HOME: home, XDG_CACHE_HOME: home, XDG_RUNTIME_DIR: home, HOME: home },
        timeout: 60000,
    }).toString();
    assert.deepEqual(JSON.parse(output.trim().split('\n').at(-1)), {
        findings: ['1:1-5 integer-index', '1:1-5 missing-value'],
        definition: path.join(root, 'part.tpl'),
        include: ['0:14-25 Unexpected closing optional tag'],
        completion: ['name'],
        renamed: '{item::*::name}{/optional}',
    });
});
