// Runs the suite's tests in the WebAssembly build: node phpt.mjs BUILD ROOT [NAME...]
// ROOT is the repository. skipped.tsv tells what can't run here: a test (or tests, with a star), nothing or how the
// line of its output begins that is left out (behind "?": if it is there), and why.

import { readdirSync, readFileSync, statSync } from "node:fs";
import { basename, join, relative } from "node:path";
import { load } from "./build.mjs";

const [build, root, ...wanted] = process.argv.slice(2);
const start = await load(build);

// What PHP's command line has.
const PRELUDE = "foreach (['in', 'out', 'err'] as $_) { define('STD' . strtoupper($_), fopen('php://std' . $_, 'r+')); }";
const SETTINGS = "display_errors=1\nerror_reporting=-1\nmemory_limit=128M\n";

/** Files of the repository, by their paths on the file system in memory. */
function files(path) {
  return statSync(path).isDirectory()
    ? Object.assign({}, ...readdirSync(path).map((name) => files(join(path, name))))
    : { [`/suite/${relative(root, path)}`]: portable(path, readFileSync(path)) };
}

/** An error's number is the system's own. */
function portable(path, content) {
  return Buffer.from(content.toString("latin1").replaceAll("errno=21 Is a", "errno=31 Is a"), "latin1");
}

function sections(text) {
  const parts = text.split(/^--([A-Z]+)--\n/m).slice(1);
  return Object.fromEntries(parts.flatMap((part, i) => (i % 2 ? [] : [[part, parts[i + 1]]])));
}

async function output(script, settings, children) {
  const php = await start(settings);
  php.write({
    ...image,
    "/suite/tests/child.inc": childInc,
    "/suite/tests/script.php": Buffer.from(script.replace(/^<\?php/, `<?php ${PRELUDE}`), "latin1"),
    "/children.json": JSON.stringify(children),
    "/asked/none": "",
  });
  php.run("/suite/tests/script.php");
  const results = [];
  for (const asked = new Set(php.names("/asked")); asked.has(`${results.length}.json`);) {
    results.push(await child(JSON.parse(Buffer.from(php.read(`/asked/${results.length}.json`)).toString())));
  }
  const text = Buffer.from(php.bytes()).toString("latin1").split("\n").filter((line) => line.trim() !== "");
  return results.length ? output(script, settings, results) : text;
}

/** What a script printed that may end its process, and its exit status. */
async function child({ files, options }) {
  const settings = [...options.matchAll(/-d (\S+)/g)].map(([, setting]) => `${setting}\n`).join("");
  const php = await start(SETTINGS + settings);
  const content = Object.entries(files).map(([name, text]) => [`/child${name}`, Buffer.from(text, "base64")]);
  php.write({ ...image, ...Object.fromEntries(content) });
  const status = php.run("/child/child.php");
  return `${php.output().trim()} | exit ${status}`;
}

/** What is wrong with a test, "" when nothing is. */
async function fault(name, leftOut) {
  const test = sections(image[`/suite/tests/${name}.phpt`].toString("latin1"));
  const settings = SETTINGS + (test.INI ?? "");
  const reason = test.SKIPIF ? await output(test.SKIPIF, settings, []) : [];
  if (reason.length) {
    return `${reason[0]}: not in skipped.tsv`;
  }
  const all = await output(test.FILE, settings, []);
  const printed = all.filter((line) => !leftOut.some((start) => line.startsWith(start.replace(/^\?/, ""))));
  const useless = leftOut.filter((start) => !start.startsWith("?") && !all.some((line) => line.startsWith(start)));
  const expected = test.EXPECT.split("\n").filter((line) => line.trim() !== "");
  const lines = [
    ...useless.map((start) => `left out in vain: ${start}`),
    ...expected.filter((line) => !printed.includes(line)).map((line) => `- ${line}`),
    ...printed.filter((line) => !expected.includes(line)).map((line) => `+ ${line}`),
  ];
  const inOrder = lines.length || printed.join("\n") === expected.join("\n");
  return inOrder ? lines.slice(0, 30).join("\n  ") : "lines in another order";
}

const childInc = readFileSync(new URL("child.inc", import.meta.url));
const image = Object.assign({}, ...readdirSync(root)
  .filter((name) => !["build", ".git", "node_modules"].includes(name)).map((name) => files(join(root, name))));
const skipped = readFileSync(new URL("skipped.tsv", import.meta.url), "utf8").trim().split("\n")
  .map((line) => line.split("\t"));
const isAbout = ([test], name) => new RegExp(`^${test.replaceAll("*", ".*")}$`).test(name);
const names = readdirSync(join(root, "tests")).filter((name) => name.endsWith(".phpt"))
  .map((name) => basename(name, ".phpt"));
let [passed, failed, left] = [0, 0, 0];
for (const name of wanted.length ? wanted : names) {
  const about = skipped.filter((each) => isAbout(each, name));
  if (about.some(([, line]) => line === "")) {
    left++;
    continue;
  }
  const wrong = await fault(name, about.map(([, line]) => line)).catch((error) => `the module broke: ${error.stack}`);
  wrong ? failed++ : passed++;
  wrong && console.log(`${name}: ${wrong}`);
}
console.log(`suite: ${passed} passed, ${failed} failed, ${left} can't run here`);
process.exitCode = failed || !passed ? 1 : 0;
