// Opens page.html of a folder in Chromium, served with a strict policy and from disk:
//   node browser.mjs FOLDER CHROMIUM VERSION
// Beside page.html and page.js the folder holds engine/. VERSION is what the engine has to say of itself.

import { spawn } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync } from "node:fs";
import { createServer } from "node:http";
import { tmpdir } from "node:os";
import { extname, join } from "node:path";
import { pathToFileURL } from "node:url";

const POLICY = "default-src 'none'; script-src 'self' 'wasm-unsafe-eval'; worker-src 'self'; connect-src 'self'";
const TYPES = { ".html": "text/html", ".js": "text/javascript", ".wasm": "application/wasm" };
const [folder, chromium, version] = process.argv.slice(2);
let report = () => {};

const server = createServer(async (request, response) => {
  const path = new URL(request.url, "http://localhost").pathname;
  if (path === "/report") {
    let text = "";
    for await (const chunk of request) {
      text += chunk;
    }
    response.end();
    report(JSON.parse(text));
    return;
  }
  try {
    const content = readFileSync(join(folder, path));
    response.writeHead(200, { "Content-Type": TYPES[extname(path)], "Content-Security-Policy": POLICY });
    response.end(content);
  } catch {
    response.writeHead(404).end();
  }
});
await new Promise((resolve) => server.listen(0, "127.0.0.1", resolve));
const host = `http://127.0.0.1:${server.address().port}`;
const query = `?version=${version}&report=${host}/report`;

let [passed, failed] = [0, 0];
for (const [how, address] of [["server", `${host}/page.html`], ["disk", pathToFileURL(join(folder, "page.html"))]]) {
  const profile = mkdtempSync(join(tmpdir(), "wasm-test-"));
  const options = ["--headless", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
    `--user-data-dir=${profile}`];
  const browser = spawn(chromium, [...options, address + query], { stdio: "ignore" });
  const silent = { passed: 0, faults: ["the page doesn't report within two minutes"], times: "" };
  const result = await new Promise((resolve) => {
    report = resolve;
    setTimeout(resolve, 120_000, silent).unref();
  });
  browser.kill();
  await new Promise((resolve) => browser.once("exit", resolve));
  rmSync(profile, { recursive: true, force: true, maxRetries: 20 });
  for (const fault of result.faults) {
    console.log(`page from the ${how}: ${fault}`);
  }
  console.log(`page from the ${how}: ${result.passed} passed, ${result.faults.length} failed; ${result.times}`);
  passed += result.passed;
  failed += result.faults.length;
}
server.close();
process.exitCode = failed || !passed ? 1 : 0;
