// Runs random templates in the WebAssembly build and in the native one, and compares results and messages:
//   node random.mjs BUILD ROOT COUNT PHP MODULE
// PHP is the command, MODULE the extension of the native build.

import { execFile } from "node:child_process";
import { readdirSync, readFileSync } from "node:fs";
import { join } from "node:path";
import { promisify } from "node:util";
import { load } from "./build.mjs";

const BATCH = 2000;
const [build, root, count, php, module] = process.argv.slice(2);
const start = await load(build);
const sources = readdirSync(join(root, "fuzz")).filter((name) => name.endsWith(".php"));
const script = join(root, "wasm/tests/random.php");

async function native(first) {
  const options = ["-n", "-d", `extension=${module}`, "-d", "memory_limit=128M", script, String(first), String(BATCH)];
  const { stdout } = await promisify(execFile)(php, options, { maxBuffer: 1 << 28 });
  return stdout.trim().split("\n");
}

async function inWasm(first) {
  const php = await start("memory_limit=128M\n");
  php.write({
    "/wasm/tests/random.php": readFileSync(script),
    ...Object.fromEntries(sources.map((name) => [`/fuzz/${name}`, readFileSync(join(root, "fuzz", name))])),
    "/batch.json": JSON.stringify([first, BATCH]),
  });
  php.run("/wasm/tests/random.php");
  return php.output().trim().split("\n");
}

let [passed, failed] = [0, 0];
for (let first = 1; first <= Number(count); first += BATCH) {
  const [wanted, got] = await Promise.all([native(first), inWasm(first)]);
  for (let i = 0; i < BATCH; i++) {
    // A batch that ends early fails from there on.
    if (wanted[i]?.startsWith(`${first + i} `) && wanted[i] === got[i]) {
      passed++;
    } else if (failed++ < 5) {
      console.log(`native ${wanted[i] ?? wanted.at(-1)}\nhere   ${got[i] ?? got.at(-1)}`);
    }
  }
}
console.log(`random templates: ${passed} passed, ${failed} failed`);
process.exitCode = failed || !passed ? 1 : 0;
