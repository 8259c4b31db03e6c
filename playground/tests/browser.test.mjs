// The playground in a real browser. PLAYGROUND is its address, CHROMIUM the browser, and SCREENSHOTS, if it is set, the
// folder in which each test leaves a picture.

import assert from "node:assert/strict";
import { after, afterEach, before, beforeEach, test } from "node:test";
import { chromium } from "playwright-core";

const { PLAYGROUND, CHROMIUM, SCREENSHOTS } = process.env;
const MODIFIER = "Control";
let browser, context, page, foreign, forbidden, faults;

before(async () => {
  browser = await chromium.launch({
    executablePath: CHROMIUM,
    args: ["--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-background-networking",
      "--disable-component-update", "--disable-sync"],
  });
});
after(() => browser.close());

beforeEach(() => openPage({ viewport: { width: 1360, height: 860 } }));
afterEach(() => context.close());

async function openPage(options, fragment = "") {
  await context?.close();
  context = await browser.newContext({ ...options, permissions: ["clipboard-read", "clipboard-write"] });
  page = await context.newPage();
  page.setDefaultTimeout(8000);
  foreign = [];
  forbidden = 0;
  faults = [];
  const isForeign = (request) => !request.url().startsWith(PLAYGROUND) && !/^(data|about):/.test(request.url());
  page.on("request", (request) => isForeign(request) && foreign.push(request.url()));
  // The browser announces a request also when the page's policy forbids it.
  page.on("requestfailed", (request) => {
    if (isForeign(request) && /csp|BLOCKED_BY_CSP/i.test(request.failure().errorText)) {
      forbidden++;
      foreign.splice(foreign.indexOf(request.url()), 1);
    }
  });
  page.on("pageerror", (error) => faults.push(error.message));
  await page.goto(PLAYGROUND + fragment);
  await page.locator("#time").filter({ hasText: "bytes" }).or(page.locator("#list .error")).first().waitFor();
}

const rendered = () => page.frameLocator("#page").locator("body");
const tab = (name) => page.getByRole("tab", { name, exact: true });

async function type(editor, text) {
  await page.locator(`${editor} .cm-content`).click();
  await page.keyboard.press(`${MODIFIER}+a`);
  await page.keyboard.insertText(text);
}
const typeTemplate = (text) => type("#template-editor", text);
const typeData = (data) => type("#data-editor", JSON.stringify(data));

async function picture(name) {
  if (SCREENSHOTS) {
    await page.waitForTimeout(400);
    await page.screenshot({ path: `${SCREENSHOTS}/${name}.png` });
  }
}

async function waitForText(locator, pattern) {
  await locator.filter({ hasText: pattern }).first().waitFor();
}

test("what is typed is rendered: page, source, time and tree", async () => {
  await picture("start");
  await typeTemplate("<h1>{htmlspecialchars title}</h1>{dynamic row,rows}<p>{row::*::name} {none 'ß€😀'}</p>{/dynamic}");
  await typeData({ title: "A & B", rows: [{ name: "one" }, { name: "two" }] });
  await waitForText(rendered(), "two ß€😀");
  assert.deepEqual(await rendered().locator("p").allTextContents(), ["one ß€😀", "two ß€😀"]);
  assert.match(await page.locator("#time").textContent(), /^\d+(\.\d)? [µm]s · \d+ bytes$/);
  await tab("Source").click();
  await waitForText(page.locator("#source .cm-content"), "<h1>A &amp; B</h1>");
  await tab("Blocks").click();
  assert.deepEqual(await page.locator("#tree .tag").allTextContents(),
    ["{htmlspecialchars title}", "{dynamic row,rows}", "{row::*::name}", "{none 'ß€😀'}"]);
  assert.equal(await page.locator("#tree details details, #tree details li").count(), 2);
  await waitForText(page.locator("#tree .settled"), "2 rounds");
});

test("an error is underlined at its place and the list leads there, also in a partial", async () => {
  await typeTemplate("😀 {optional a}x\n{include part.tpl}");
  const error = page.locator("#list .error");
  await waitForText(error, "Missing closing tag");
  assert.equal(await page.locator("#template-editor .cm-lintRange-error").textContent(), "{optional a}");
  await page.locator("#template-editor .cm-lintRange-error").hover();
  await waitForText(page.locator(".cm-tooltip-lint"), "Missing closing tag");
  await picture("error");

  await page.getByRole("button", { name: "+ Partial" }).click();
  await typeTemplate("ab\n{dynamic b}{/optional}");
  await waitForText(error, "part.tpl:2:12");
  await page.getByRole("tab", { name: "page.tpl" }).click();
  await page.getByRole("button", { name: "part.tpl:2:12" }).click();
  assert.equal(await page.locator("#files [aria-selected=true]").textContent(), "part.tpl");
  await waitForText(page.locator("#template-editor .cm-activeLine"), "{dynamic b}");
  await picture("error-in-partial");

  await type("#data-editor", '{"a": 1,\n "b": [1, 2}');
  await waitForText(error, "data.json:2:12");
  assert.equal(await page.locator("#data-editor .cm-lintRange-error, #data-editor .cm-lintPoint-error").count(), 1);
});

test("partials are added, renamed and deleted", async () => {
  await typeTemplate("[{include box/side.tpl}]");
  await page.getByRole("button", { name: "+ Partial" }).click();
  await page.keyboard.insertText("box/side.tpl");
  await page.keyboard.press("Enter");
  await typeTemplate("in the box");
  await waitForText(rendered(), "[in the box]");
  await page.getByRole("button", { name: "Delete" }).click();
  await waitForText(rendered(), "[]");
  await waitForText(page.locator("#list .warning"), "there is no file");
});

test("a link restores what one sees, and a broken one does no harm", async () => {
  await typeTemplate("<i>{greeting} {include more.tpl}</i>");
  await typeData({ greeting: "Grüße 😀" });
  await page.getByRole("button", { name: "+ Partial" }).click();
  await page.keyboard.insertText("more.tpl");
  await page.keyboard.press("Enter");
  await typeTemplate("from a partial");
  await tab("Blocks").click();
  await page.getByRole("button", { name: "Copy link" }).click();
  await page.getByRole("button", { name: "Copied" }).waitFor();
  const link = await page.evaluate(() => navigator.clipboard.readText());

  await openPage({ viewport: { width: 1360, height: 860 } }, link.slice(PLAYGROUND.length));
  assert.equal(await page.locator("#files [aria-selected=true]").textContent(), "more.tpl");
  await waitForText(page.locator("#template-editor .cm-content"), "from a partial");
  assert.equal(await page.locator("#views [aria-selected=true]").textContent(), "Blocks");
  await waitForText(page.locator("#tree .tag"), "{greeting}");
  await picture("shared-link");
  assert.equal(await page.locator("#example option:checked").textContent(), "A page of your own");
  await tab("Page").click();
  assert.equal(await rendered().innerText(), "Grüße 😀 from a partial");

  await openPage({}, "#1-AAAA");
  await waitForText(page.locator("#note"), "link is broken");
});

test("each example renders; the error's example shows its error", async () => {
  const titles = await page.locator("#example option:not([hidden])").allTextContents();
  assert.ok(titles.length >= 10, titles.join());
  for (const [number, title] of titles.entries()) {
    if (number > 0) {
      const answer = page.waitForResponse((response) => response.url().endsWith("/api/render"));
      await page.getByRole("button", { name: "Next example" }).click();
      const { page: html, findings } = await (await answer).json();
      const errors = findings.filter(({ severity }) => severity === "error").map(({ message }) => message);
      assert.equal((await page.locator("#time").textContent()) === "no page", html === null, title);
      assert.deepEqual([html === null, errors], title.includes("wrong") ? [true, ["Missing closing tag"]] : [false, []], title);
      await picture(`example-${number}`);
    }
  }
  assert.ok(await page.getByRole("button", { name: "Next example" }).isDisabled());
  await page.locator("#example").selectOption({ label: titles[5] });
  await waitForText(rendered(), "Night Train");
});

test("all of it can be reached by keyboard", async () => {
  const reached = [];
  await page.locator("body").press("Tab");
  for (let steps = 0; steps < 20; steps++) {
    reached.push(await page.evaluate(() => document.activeElement.id || document.activeElement.textContent.slice(0, 20)
      + (document.activeElement.closest(".editor")?.id ?? "")));
    await page.keyboard.press("Tab");
  }
  for (const part of ["example", "next", "share", "page.tpl", "add", "template-editor", "data-editor", "Page"]) {
    assert.ok(reached.some((each) => each.includes(part)), `${part} is not among ${reached.join(" | ")}`);
  }
  await tab("Page").focus();
  await page.keyboard.press("ArrowRight");
  await page.keyboard.press("ArrowRight");
  assert.equal(await page.evaluate(() => document.activeElement.textContent), "Blocks");
  await page.locator("#tree .tag").first().waitFor();
});

test("a page can neither run scripts nor load anything", async () => {
  await typeTemplate(`{include php://filter/resource=page.tpl}{include /etc/passwd}{include ../../../../etc/passwd}
    <img src="http://example.invalid/a.png"><iframe src="http://example.invalid/frame"></iframe>
    <script>document.title = "hacked"; parent.document.title = "hacked"; top.location = "http://example.invalid/"</script>
    <style>@import "http://example.invalid/a.css"; p {{ background: url(http://example.invalid/b.png) }</style>
    <p onclick="document.title = 'hacked'">end of the page</p><a href="http://example.invalid/c">link</a>`);
  await waitForText(rendered(), "end of the page");
  await rendered().locator("p").click();
  await rendered().locator("a").click();
  assert.doesNotMatch(await rendered().innerText(), /root:/);
  assert.equal(await page.title(), "template – playground");
  assert.ok(forbidden >= 3, `${forbidden} requests were forbidden`);
  assert.deepEqual(foreign, []);
  assert.equal(context.pages().length, 1);
  assert.equal(await rendered().locator("a").textContent(), "link");
  assert.equal(await page.locator("#list .warning").count(), 3);
  await picture("break-out");
});

test("an endless page and a giant one end in a plain sentence, and the next page comes", async () => {
  await typeData({ l: [..."0123456789"] });
  await typeTemplate("{dynamic l}".repeat(10) + "{/dynamic}".repeat(10));
  await page.locator("#list .error", { hasText: "The page took more than 2 seconds" }).waitFor({ timeout: 15000 });
  await picture("endless");
  await typeTemplate("a".repeat(300000));
  await waitForText(page.locator("#failure"), "too much");
  await typeTemplate("well again");
  await waitForText(rendered(), "well again");
  assert.ok(await page.locator("#failure").isHidden());
});

test("a narrow window and dark mode", async () => {
  await openPage({ viewport: { width: 390, height: 844 } });
  const isTooWide = () => page.evaluate(() => document.documentElement.scrollWidth > innerWidth);
  assert.equal(await isTooWide(), false);
  const [template, output] = await Promise.all(["#templates", "#output"].map((id) => page.locator(id).boundingBox()));
  assert.ok(output.y >= template.y + template.height);
  await picture("narrow");
  await openPage({ viewport: { width: 390, height: 844 }, colorScheme: "dark" });
  await picture("narrow-dark");
  await openPage({ viewport: { width: 1360, height: 860 }, colorScheme: "dark" });
  const [, red] = /rgb\((\d+)/.exec(await page.evaluate(() => getComputedStyle(document.querySelector(".cm-editor")).backgroundColor));
  assert.ok(Number(red) < 60);
  await picture("dark");
  await page.locator("#example").selectOption("5");
  await tab("Blocks").click();
  await picture("dark-blocks");
});

afterEach(() => assert.deepEqual(faults, []));
