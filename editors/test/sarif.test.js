// "template check --format sarif" makes what the format's own types say.
const { spawnSync } = require('node:child_process');
const assert = require('node:assert');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { test } = require('node:test');

const command = JSON.parse(process.env.TEMPLATE_COMMAND);
const modules = path.join(__dirname, '..', 'node_modules');

/** What the compiler says of a text that stands for a log. */
function compiled(folder, log) {
  fs.writeFileSync(path.join(folder, 'log.ts'), `import { Log } from 'sarif';\nexport const log: Log = ${log};\n`);
  const tsc = path.join(modules, 'typescript/bin/tsc');
  const roots = path.join(modules, '@types');
  return spawnSync(process.execPath, [tsc, '--noEmit', '--strict', '--typeRoots', roots, '--types', 'sarif', 'log.ts'], {
    cwd: folder,
    encoding: 'utf8',
  }).stdout;
}

test('a log with errors, warnings, includes, edits and a file that is not there', () => {
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'template-sarif-'));
  try {
    fs.writeFileSync(path.join(folder, 'page.tpl'), '{include part.tpl}{a::}\n{Optional b}{/Optional}');
    fs.writeFileSync(path.join(folder, 'part.tpl'), 'é {*} {dynamic r ,x}{/dynamic}');
    fs.symlinkSync(modules, path.join(folder, 'node_modules'));
    const run = spawnSync(command[0], [...command.slice(1), 'check', '--format', 'sarif', 'page.tpl', 'none.tpl'], {
      cwd: folder,
      encoding: 'utf8',
    });
    assert.strictEqual(run.status, 2, run.stderr);
    assert.strictEqual(compiled(folder, run.stdout), '');
    assert.notStrictEqual(compiled(folder, run.stdout.replace('"startLine"', '"line"')), '');

    const { results, tool } = JSON.parse(run.stdout).runs[0];
    assert.deepStrictEqual(results.map((result) => [result.ruleId, result.level, 'relatedLocations' in result, 'fixes' in result]), [
      ['unreadable-file', 'error', false, false],
      ['engine', 'error', false, false],
      ['misspelt-keyword', 'warning', false, true],
      ['misspelt-keyword', 'warning', false, true],
      ['outside-loop', 'warning', true, false],
      ['blank-at-comma', 'warning', true, true],
    ]);
    for (const result of results) {
      assert.strictEqual(tool.driver.rules[result.ruleIndex].id, result.ruleId);
    }
  } finally {
    fs.rmSync(folder, { recursive: true });
  }
});
