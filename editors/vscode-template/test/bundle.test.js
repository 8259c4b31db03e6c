// The bundle as it is packed: it needs nothing but the editor, and starts what the settings say.
const assert = require('node:assert');
const Module = require('node:module');
const path = require('node:path');
const test = require('node:test');

const ROOT = path.join(__dirname, '..');

/** Stands for anything of the editor's interface: can be called, made, extended and asked for members. */
const anything = new Proxy(function () {}, {
    get: (target, key) => key === Symbol.toPrimitive ? () => '' : key === Symbol.iterator ? [][Symbol.iterator].bind([])
        : key === 'then' ? undefined : key === 'prototype' ? target.prototype : anything,
    apply: () => anything,
    construct: () => ({}),
});

test('the bundle needs no other package, and has a beginning and an end', async () => {
    const load = Module._load;
    const asked = new Set();
    Module._load = (name, ...rest) => {
        asked.add(name);
        return name === 'vscode' ? anything : load(name, ...rest);
    };
    const manifest = require(path.join(ROOT, 'package.json'));
    const extension = require(path.join(ROOT, manifest.main));
    Module._load = load;
    const others = [...asked].filter(name => !Module.isBuiltin(name) && !path.isAbsolute(name));
    assert.deepEqual(others, ['vscode']);
    assert.deepEqual([typeof extension.activate, typeof extension.deactivate], ['function', 'function']);
    await extension.deactivate();
});
