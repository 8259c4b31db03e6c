// What the tests share: a browser, pages that report what goes wrong in them, and the hands of a reader.
//   SITE         the address of the site     FOLDER       its files
//   CHROMIUM     the browser                 SCREENSHOTS  a folder for pictures, if it is set

import assert from "node:assert/strict";
import { after, afterEach, before } from "node:test";
import { chromium } from "playwright-core";

export const { SITE, FOLDER, SCREENSHOTS } = process.env;
export const WIDE = { width: 1440, height: 900 };

export let browser, context, page;
/** What pages have asked of other hosts, how many such requests the policy has stopped, and what has failed in them. */
export let foreign = [], forbidden = 0, faults = [];

before(async () => {
  browser = await chromium.launch({
    executablePath: process.env.CHROMIUM,
    args: ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-background-networking",
      "--disable-component-update", "--disable-sync"],
  });
});
after(() => browser.close());
afterEach(async () => {
  await context?.close();
  context = null;
  assert.deepEqual(faults, []);
});

/** Opens a page of the site, by its name behind `SITE` or by a whole address, in a browser that knows nothing yet. */
export async function open(name, options = {}) {
  await context?.close();
  context = await browser.newContext({ viewport: WIDE, ...options, permissions: ["clipboard-read", "clipboard-write"] });
  page = await context.newPage();
  page.setDefaultTimeout(10_000);
  [foreign, forbidden, faults] = [[], 0, []];
  const isForeign = (request) => !/^(data|about|blob|file):/.test(request.url()) && !request.url().startsWith(SITE);
  page.on("request", (request) => isForeign(request) && foreign.push(request.url()));
  // The browser announces a request also when the page's policy forbids it.
  page.on("requestfailed", (request) => {
    if (isForeign(request) && /csp/i.test(request.failure().errorText)) {
      forbidden++;
      foreign.splice(foreign.indexOf(request.url()), 1);
    }
  });
  page.on("pageerror", (error) => faults.push(error.message));
  await page.goto(/^\w+:/.test(name) ? name : SITE + name);
  return page;
}

export async function openPlayground(fragment = "", options = {}) {
  await open(`playground.html${fragment}`, options);
  await ready();
}

/** Waits for the first result. */
export const ready = () => page.locator("#time").filter({ hasText: "bytes" }).or(page.locator("#list .error")).first().waitFor({ timeout: 30_000 });

export const rendered = () => page.frameLocator("#page").locator("body");
export const tab = (name) => page.getByRole("tab", { name, exact: true });
export const button = (name) => page.getByRole("button", { name, exact: true });
export const waitForText = (locator, pattern) => locator.filter({ hasText: pattern }).first().waitFor();

export async function type(editor, text) {
  await page.locator(`${editor} .cm-content`).click();
  await page.keyboard.press("Control+a");
  await page.keyboard.insertText(text);
}
export const typeTemplate = (text) => type("#template-editor", text);
export const typeData = (data) => type("#data-editor", typeof data === "string" ? data : JSON.stringify(data));

export async function picture(name) {
  if (SCREENSHOTS) {
    await page.waitForTimeout(400);
    await page.screenshot({ path: `${SCREENSHOTS}/${name}.png` });
  }
}
