// What a page can't do: take the engine with it, leave its frame, or load anything; and what works without a network.

import assert from "node:assert/strict";
import { test } from "node:test";
import {
  browser, context, FOLDER, forbidden, foreign, open, openPlayground, page, picture, ready, rendered, SITE, type, typeData,
  typeTemplate, waitForText,
} from "./browser.mjs";

const error = (text) => page.locator("#list .error", { hasText: text });

test("each way to come to an end gives a plain sentence, and the next page comes", async () => {
  await openPlayground();
  const loops = (depth, body) => "{dynamic l}".repeat(depth) + body + "{/dynamic}".repeat(depth);
  await typeData({ l: [..."0123456789"], long: "x".repeat(1000) });
  for (const [template, message] of [
    [loops(12, ""), "took more than 2 seconds"],
    [loops(6, "{long}"), "needed more than 64 MB"],
    [loops(4, "{long}"), "is larger than 1 MB"],
    ["{optional l}".repeat(20_000), "nested too deeply"],
    ["{include page.tpl}", "circle is detected"],
  ]) {
    await typeTemplate(template);
    await error(message).first().waitFor({ timeout: 20_000 });
    message.includes("seconds") && await picture("playground-endless");
    await typeTemplate(`well again after “${message}”`);
    await waitForText(rendered(), message);
    assert.equal(await page.locator("#list .error").count(), 0, message);
  }
});

test("a page that is typed while another one runs without end isn't kept waiting for long", async () => {
  await openPlayground();
  await typeData({ l: [..."0123456789"] });
  await typeTemplate("{dynamic l}".repeat(12) + "{/dynamic}".repeat(12));
  await page.waitForTimeout(500);
  const start = Date.now();
  await typeTemplate("the next one");
  await waitForText(rendered(), "the next one");
  assert.ok(Date.now() - start < 6000, `${Date.now() - start} ms`);
});

test("a page can neither run scripts nor load anything, nor leave its frame", async () => {
  await openPlayground();
  await typeTemplate(`{include php://filter/resource=page.tpl}{include /etc/passwd}{include ../../../../request.php}
    <img src="http://example.invalid/a.png"><iframe src="http://example.invalid/frame"></iframe>
    <script>document.title = "hacked"; parent.document.title = "hacked"; top.location = "http://example.invalid/"</script>
    <img src="x" onerror="document.title = 'hacked'"><svg onload="document.title = 'hacked'"></svg>
    <iframe srcdoc="<script>top.document.title = 'hacked'</script>"></iframe><embed src="http://example.invalid/e">
    <object data="http://example.invalid/o"></object><link rel="stylesheet" href="http://example.invalid/l.css">
    <style>@import "http://example.invalid/a.css"; p {{ background: url(http://example.invalid/b.png) }}</style>
    <meta http-equiv="refresh" content="0; url=http://example.invalid/m"><base href="http://example.invalid/">
    <form action="http://example.invalid/f" target="_blank"><button id="send">send</button></form>
    <p onclick="document.title = 'hacked'">end of the page</p><a href="http://example.invalid/c">link</a>
    <a id="top" href="http://example.invalid/d" target="_top">top</a><a id="js" href="javascript:document.title='hacked'">js</a>`);
  await waitForText(rendered(), "end of the page");
  const before = page.url();
  for (const target of ["p", "a >> nth=0", "#top", "#js", "#send"]) {
    await rendered().locator(target).click();
  }
  await page.waitForTimeout(500);
  assert.doesNotMatch(await rendered().innerText(), /root:|<\?php/);
  assert.equal(await page.title(), "Playground – template");
  assert.equal(page.url().split("#")[0], before.split("#")[0]);
  assert.ok(forbidden >= 3, `${forbidden} requests were forbidden`);
  assert.deepEqual(foreign, []);
  assert.equal(context.pages().length, 1);
  assert.equal(await page.evaluate(() => document.getElementById("page").getAttribute("sandbox")), "");
  assert.equal(await page.locator("#list .warning", { hasText: /no file|stream/ }).count() > 0, true);
});

test("the policy allows WebAssembly, and no code from text, no inline script, no other host", async () => {
  await openPlayground();
  const policies = [
    (await page.request.get(page.url().split("#")[0])).headers()["content-security-policy"],
    await page.locator("meta[http-equiv=Content-Security-Policy]").getAttribute("content"),
  ];
  for (const policy of policies) {
    const [, scripts] = /script-src ([^;]*)/.exec(policy);
    assert.deepEqual(scripts.trim().split(" "), ["'self'", "'wasm-unsafe-eval'"]);
    assert.match(policy, /default-src 'none'/);
  }
  const stopped = await page.evaluate(async () => {
    // What the test itself calls is free of the policy up to here.
    await new Promise((resolve) => setTimeout(resolve));
    const results = {};
    const attempt = async (name, how) => { results[name] = await how().then(() => "allowed", () => "stopped"); };
    await attempt("eval", async () => (0, eval)("1"));
    await attempt("function", async () => new Function("return 1")());
    await attempt("fetch", () => fetch("http://example.invalid/"));
    await attempt("inline", () => new Promise((resolve, reject) => {
      const script = document.createElement("script");
      script.textContent = "window.hacked = true";
      document.head.append(script);
      window.hacked ? resolve() : reject();
    }));
    await attempt("worker", () => new Promise((resolve, reject) => {
      const worker = new Worker(URL.createObjectURL(new Blob(["postMessage(1)"])));
      worker.onmessage = resolve;
      worker.onerror = reject;
    }));
    await attempt("wasm", () => WebAssembly.compile(new Uint8Array([0, 97, 115, 109, 1, 0, 0, 0])));
    return results;
  });
  assert.deepEqual(stopped,
    { eval: "stopped", function: "stopped", fetch: "stopped", inline: "stopped", worker: "stopped", wasm: "allowed" });
  foreign.length = 0;
});

test("once loaded, all of it works without a network", async () => {
  await openPlayground();
  await page.evaluate(() => navigator.serviceWorker.ready);
  // What the page has loaded before the service worker was there is fetched once more.
  await page.waitForFunction(async () => {
    const names = await caches.keys();
    const kept = await Promise.all(names.map(async (name) => (await (await caches.open(name)).keys()).map(({ url }) => url)));
    return ["playground.html", "guide.html", "engine.wasm", "engine-worker.js"]
      .every((each) => kept.flat().some((url) => url.endsWith(each)));
  });
  await context.setOffline(true);
  await page.goto(`${SITE}playground.html`);
  await ready();
  await typeTemplate("without a {network}");
  await typeData({ network: "wire" });
  await waitForText(rendered(), "without a wire");
  await page.goto(`${SITE}guide.html`);
  await page.getByRole("heading", { name: "5. Loops" }).waitFor();
  await page.keyboard.press("/");
  await page.locator(".search input").fill("rdynamic");
  await page.locator(".search li").first().waitFor();
});

test("all of it works from disk: links, search, an example, the playground", async () => {
  await open(`file://${FOLDER}/index.html`);
  await page.getByRole("link", { name: "Read the guide" }).click();
  await page.getByRole("heading", { name: "5. Loops" }).waitFor();
  await page.keyboard.press("/");
  await page.locator(".search input").fill("nested too deeply");
  await page.locator(".search li a").first().click();
  await page.waitForURL(/\.html#/);
  await page.goto(`file://${FOLDER}/playground.html`);
  await ready();
  await typeTemplate("from a {disk}");
  await typeData({ disk: "disk" });
  await waitForText(rendered(), "from a disk");
  await page.goto(`file://${FOLDER}/guide.html`);
  await page.locator("figure:has(.template) .edit").first().click();
  await type(".live .panes > .editor", "<h1>{cinema::name}!</h1>");
  await waitForText(page.locator(".live .outcome .cm-content"), "Roxy!");
  assert.deepEqual(foreign, []);
});

test("a browser without WebAssembly, or a server without the engine, is told so in a sentence", async () => {
  const other = await browser.newContext();
  const broken = await other.newPage();
  await broken.route("**/engine.wasm", (route) => route.fulfill({ status: 404, body: "" }));
  await broken.goto(`${SITE}playground.html`);
  await broken.locator("#list .error", { hasText: "The engine can’t be loaded" }).waitFor();
  await broken.unroute("**/engine.wasm");
  await broken.locator("#template-editor .cm-content").click();
  await broken.keyboard.type("x");
  await broken.locator("#time", { hasText: "bytes" }).waitFor();
  await other.close();
});
