// What a user of Visual Studio Code does in a template: in a browser, with pictures; README.md beside this
// says how to start it.
// ADDRESS: of the editor; FOLDER: an empty one, for the templates; PICTURES: the folder for the pictures; CHROMIUM: the program.
import assert from 'node:assert';
import fs from 'node:fs';
import path from 'node:path';
import { chromium } from 'playwright-core';

const { ADDRESS, CHROMIUM, FOLDER, PICTURES } = process.env;
const files = {
    'template.json': '{"data": {"*": "data.json"}}\n',
    'data.json': '{"title": "T", "user": {"name": "Ann"}, "rows": [{"name": "A"}]}\n',
    'page.tpl': '{dynamic row,  rows}\n  {0::x}\n  {include part.tpl}\n  {user::name}\n{/dynamic}\n',
    'part.tpl': '<li>{row::*::name}</li>{/optional}\n',
};
for (const [name, text] of Object.entries(files)) {
    fs.writeFileSync(path.join(FOLDER, name), text);
}

const browser = await chromium.launch({ executablePath: CHROMIUM, args: ['--no-sandbox'] });
const page = await browser.newPage({ viewport: { width: 1280, height: 800 } });
page.setDefaultTimeout(60000);
let passed = 0;
async function step(what, action) {
    try {
        await action();
        passed++;
    } finally {
        await page.screenshot({ path: path.join(PICTURES, `${what}.png`) });
    }
}

const keys = async (...names) => {
    for (const name of names) {
        await page.keyboard.press(name);
    }
};
const row = name => page.locator('.explorer-folders-view .monaco-list-row', { hasText: name });
const tab = name => page.locator(`.tab.active[data-resource-name="${name}"]`);
const line = text => page.locator('.editor-group-container .view-line', { hasText: text }).first();
/** Puts the cursor at a column of a line, both from 1. */
const goTo = async (number, column) => {
    await page.locator('.editor-group-container .monaco-editor').first().click();
    await keys('Control+G');
    await page.locator('.quick-input-widget').waitFor();
    await page.keyboard.type(`${number}:${column}`);
    await keys('Enter');
    await page.locator('.quick-input-widget').waitFor({ state: 'hidden' });
};
const problems = page.locator('.markers-panel .monaco-list-row');

try {
    await page.goto(`${ADDRESS}/?folder=${FOLDER}`);
    await row('page.tpl').dblclick();
    await tab('page.tpl').waitFor();
    await step('findings', async () => {
        await page.locator('.squiggly-warning').first().waitFor();
        await keys('Control+Shift+M');
        await problems.filter({ hasText: 'Unexpected closing optional tag' }).waitFor();
        await problems.filter({ hasText: 'integer-index' }).waitFor();
        await problems.filter({ hasText: 'blank-at-comma' }).waitFor();
    });
    await step('hover', async () => {
        await goTo(4, 12);
        await keys('Control+K', 'Control+I');
        await page.locator('.monaco-hover', { hasText: '"Ann"' }).first().waitFor();
        await keys('Escape');
    });
    await step('repair', async () => {
        await goTo(1, 14);
        await keys('Control+.');
        await page.locator('.action-widget', { hasText: 'Delete' }).waitFor();
        await keys('Enter');
        await line('{dynamic row,rows}').waitFor();
    });
    await step('rename', async () => {
        await goTo(1, 11);
        await keys('F2');
        await page.locator('.rename-input:focus').waitFor();
        await page.keyboard.type('item', { delay: 50 });
        await keys('Enter');
        await line('{dynamic item,rows}').waitFor();
    });
    await step('completion', async () => {
        await goTo(6, 1);
        await page.keyboard.type('{htmlspecialchars user::', { delay: 50 });
        await page.locator('.suggest-widget .monaco-list-row', { hasText: 'name' }).waitFor();
        await keys('Enter');
        await line('{htmlspecialchars user::name}').waitFor();
    });
    await step('include', async () => {
        await goTo(3, 14);
        await keys('F12');
        await tab('part.tpl').waitFor();
        await line('item::*::name').waitFor();
    });
    await step('data', async () => {
        await goTo(1, 16);
        await keys('F12');
        await tab('data.json').waitFor();
    });
    await step('unsaved data', async () => {
        await goTo(1, 2);
        await page.keyboard.type('x');
        await problems.filter({ hasText: 'broken JSON' }).waitFor();
        await keys('Escape', 'Control+Z');
        await problems.filter({ hasText: 'broken JSON' }).waitFor({ state: 'detached' });
    });
    await step('references', async () => {
        await goTo(1, 28);
        await keys('Shift+F12');
        await page.locator('.peekview-widget', { hasText: 'page.tpl' }).first().waitFor();
    });
} finally {
    await browser.close();
}
assert.equal(passed, 9);
console.log(`${passed} passed, 0 failed`);
