// How long a reader waits for the playground's first result, and what comes over the wire for it: node times.mjs VISITS
//   SITE   the address of the site, packed     CHROMIUM   the browser
// The first visit is that of a browser that knows nothing, the second that of one that has been there.

import { chromium } from "playwright-core";

const { SITE, CHROMIUM } = process.env;
const visits = Number(process.argv[2]);
const browser = await chromium.launch({ executablePath: CHROMIUM, args: ["--headless", "--no-sandbox", "--disable-gpu"] });

/** Milliseconds from opening the page to its first result, and the bytes that came by then, with their headers. */
async function visit(context) {
  const page = await context.newPage();
  const wire = await context.newCDPSession(page);
  let bytes = 0;
  wire.on("Network.loadingFinished", ({ encodedDataLength }) => { bytes += encodedDataLength; });
  await wire.send("Network.enable");
  await page.goto(`${SITE}playground.html`);
  const result = await page.waitForFunction(() => /bytes/.test(document.getElementById("time").textContent) && performance.now());
  const milliseconds = await result.jsonValue();
  // What has been loaded is kept for the next visit, without haste.
  await page.evaluate(() => navigator.serviceWorker.ready);
  await page.waitForTimeout(1500);
  await page.close();
  return { milliseconds, bytes };
}

const middle = (numbers) => numbers.sort((a, b) => a - b)[numbers.length >> 1];
const seen = { cold: [], warm: [] };
for (let number = 0; number < visits; number++) {
  const context = await browser.newContext();
  seen.cold.push(await visit(context));
  seen.warm.push(await visit(context));
  await context.close();
}
for (const [name, all] of Object.entries(seen)) {
  const times = all.map(({ milliseconds }) => Math.round(milliseconds));
  const kilobytes = Math.round(middle(all.map(({ bytes }) => bytes)) / 1000);
  console.log(`${name}: ${middle(times)} ms (${Math.min(...times)} to ${Math.max(...times)}, ${visits} visits), ${kilobytes} kB`);
}
await browser.close();
