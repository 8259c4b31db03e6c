// The manual: its examples, its search, and that everybody can read it.

import assert from "node:assert/strict";
import { createRequire } from "node:module";
import { readdir, readFile } from "node:fs/promises";
import { test } from "node:test";
import esbuild from "esbuild";
import {
  button, foreign, FOLDER, open, openPlayground, page, picture, SITE, type, waitForText,
} from "./browser.mjs";

const axe = createRequire(import.meta.url).resolve("axe-core/axe.min.js");
/** Audited in each width, with an example that is edited. */
const MAIN = ["index.html", "guide.html", "reference.html"];
const pages = (await readdir(FOLDER)).filter((name) => name.endsWith(".html"));

test("every example gives in the browser what the manual shows", async () => {
  const { outputFiles: [{ text }] } = await esbuild.build({
    stdin: { contents: 'export { Engine } from "../../wasm/web/engine"', resolveDir: import.meta.dirname ?? new URL(".", import.meta.url).pathname },
    bundle: true, write: false, format: "iife", globalName: "engineModule",
  });
  // The test's own script is no part of the page.
  await open("index.html", { bypassCSP: true });
  await page.addScriptTag({ content: text });
  const faults = [];
  const dead = [];
  let count = 0;
  for (const name of pages.filter((each) => each !== "playground.html")) {
    const html = await readFile(`${FOLDER}/${name}`, "utf8");
    const examples = JSON.parse(/id="examples">(.*?)<\/script>/s.exec(html)?.[1] ?? "[]");
    const live = examples.filter(({ state }) => state);
    dead.push(...examples.filter(({ state, kind }) => !state && kind !== "signature").map(({ reason, kind }) => reason ?? `${name}: ${kind}`));
    count += live.length;
    const results = await page.evaluate((all) => {
      window.engine ??= window.engineModule.Engine.inFolder("engine/");
      return Promise.all(all.map(({ state }) => window.engine.run(state)));
    }, live);
    for (const [at, { text: wanted, warnings, kind, state }] of live.entries()) {
      const { page, messages, findings } = results[at];
      const isScript = kind === "script";
      const got = isScript ? page || null : page;
      // A script's warnings have places.
      const told = isScript ? findings.filter(({ file }) => file === "script.php").map(({ message }) => message) : messages;
      const cut = (each) => kind !== "template" ? each?.replace(/\n$/, "") ?? null : each;
      if (cut(got) !== cut(wanted) || JSON.stringify(told) !== JSON.stringify(warnings)) {
        faults.push({ name, template: Object.values(state.files)[0], wanted, got, warnings, told, stopped: results[at].stopped });
      }
    }
  }
  assert.deepEqual(faults, []);
  assert.ok(count > 200, `${count} examples`);
  // Each reason of the list is needed, and nothing else is left out.
  const listed = (await readFile(new URL("../manual/not-live.tsv", import.meta.url), "utf8")).trim().split("\n").slice(1);
  assert.deepEqual([...new Set(dead)].sort(), listed.map((line) => line.split("\t")[2]).sort());
  assert.ok(listed.length <= 5, "most examples can be live");
});

test("an example is edited in its place: result, errors, data, files, reset, and on to the playground", async () => {
  await open("guide.html");
  const example = page.locator("figure.example", { hasText: "{include parts/film.tpl}" }).first();
  await example.getByRole("button", { name: "Edit" }).click();
  const live = page.locator(".live");
  const result = live.locator(".outcome .cm-content");
  await waitForText(result, "<li>Night Train (12+)</li>");
  assert.ok(await example.isHidden());
  await picture("guide-live");
  await live.getByRole("tab", { name: "parts/film.tpl" }).click();
  await type(".live .panes > .editor", "<dt>{film::*::title}{optional film::*::age}</dt>");
  await waitForText(live.locator(".problems .error"), "Missing closing tag");
  assert.equal(await live.locator(".cm-lintRange-error").textContent(), "{optional film::*::age}");
  await picture("guide-error");
  await type(".live .panes > .editor", "<dt>{film::*::title}</dt>");
  await waitForText(result, "<dt>Night Train</dt>");
  await live.getByRole("tab", { name: "Data" }).click();
  await type(".live .panes > .editor", '{"films": [{"title": "Other"}]}');
  await waitForText(result, "<dt>Other</dt>");
  await live.getByRole("link", { name: "Open in the playground" }).click();
  await waitForText(page.locator("#source .cm-content"), "<dt>Other</dt>");
  await page.goBack();
  await page.locator("figure .edit").first().click();
  await button("Reset").click();
  await button("Done").click();
  assert.equal(await page.locator(".live").count(), 0);
  assert.ok(await page.locator("figure .edit").first().isVisible());
});

test("a script is edited like a template: its templates, its errors with their lines, and on to the playground", async () => {
  await open("guide.html");
  const example = page.locator("figure.example", { hasText: "echo template('week.tpl', ['cinema' => 'Roxy']);" }).first();
  await example.getByRole("button", { name: "Edit" }).click();
  const live = page.locator(".live");
  await waitForText(live.locator(".outcome .cm-content"), "<h1>Roxy</h1>");
  assert.deepEqual(await live.getByRole("tab").allTextContents(), ["script.php", "week.tpl", "Result", "Page"]);
  await live.getByRole("tab", { name: "Page" }).click();
  await waitForText(live.frameLocator("iframe").locator("h1"), "Roxy");
  assert.equal(await live.locator("iframe").getAttribute("sandbox"), "");
  await type(".live .panes > .editor", "<?php\necho template('week.tpl', ['cinema' => 'Luna']);\necho template('none.tpl', []);");
  await waitForText(live.frameLocator("iframe").locator("h1"), "Luna");
  await waitForText(live.locator(".problems .warning"), /script\.php:3:1.*Could not open file none\.tpl/);
  assert.equal(await live.locator(".cm-lintRange-warning").textContent(), "echo template('none.tpl', []);");
  await picture("guide-script");
  await live.getByRole("link", { name: "Open in the playground" }).click();
  await waitForText(page.locator("#source .cm-content"), "<h1>Luna</h1>");
  assert.match(await page.locator("#files").textContent(), /^script\.php\s*week\.tpl$/);
  await waitForText(page.locator("#list .warning"), "none.tpl");
});

test("a row of a table is edited below its table, one at a time", async () => {
  await open("reference.html");
  const rows = page.locator("tr[data-example]");
  const { length } = await rows.all();
  assert.ok(length > 50, `${length} rows`);
  await rows.nth(0).getByRole("button").click();
  await page.locator(".live .outcome .cm-line").first().waitFor();
  await rows.nth(1).getByRole("button").click();
  await waitForText(page.locator(".live .panes > .editor .cm-content"), await rows.nth(1).locator("code").first().textContent());
  assert.equal(await page.locator(".live").count(), 1);
  await type(".live .panes > .editor", "{nothing 'something'} else");
  await waitForText(page.locator(".live .outcome .cm-content"), "something else");
});

test("the search finds what is asked for, by keyboard, and leads to its place", async () => {
  await open("index.html");
  await page.keyboard.press("/");
  for (const [asked, wanted] of [["rdynamic", "reference.html"], ["apache", "deployment.html#apache"],
    ["separator", "recipes.html#separators"], ["nested too deeply", "messages.html#blocks-nested-too-deeply-in-"]]) {
    await page.locator(".search input").fill(asked);
    const found = await page.locator(".search li a").evaluateAll((links) => links.map((link) => link.getAttribute("href")));
    assert.ok(found.slice(0, 4).some((url) => url.startsWith(wanted)), `${asked}: ${found.join(" ")}`);
  }
  await page.keyboard.press("ArrowDown");
  await page.keyboard.press("Enter");
  await page.waitForURL(/messages\.html#/);
  await page.keyboard.press("/");
  await page.locator(".search input").fill("xyzzyx");
  await waitForText(page.locator(".search p"), "Nothing found");
  assert.deepEqual(foreign, []);
});

for (const colorScheme of ["light", "dark"]) {
  for (const width of [1440, 900, 390]) {
    test(`axe finds nothing in ${colorScheme} at ${width}`, async () => {
      const found = [];
      const audit = async (name) => {
        await page.addScriptTag({ path: axe });
        const { violations } = await page.evaluate(() => window.axe.run({ iframes: false }));
        found.push(...violations.map(({ id, nodes }) => `${name}: ${id}: ${nodes[0].html.slice(0, 150)} (${nodes[0].any[0]?.message ?? ""})`));
        await picture(`${name.replaceAll(/\.html| /g, "")}-${width}-${colorScheme}`);
        const isTooWide = await page.evaluate(() => document.documentElement.scrollWidth > innerWidth);
        isTooWide && found.push(`${name}: wider than the window`);
      };
      // The test's own scripts are no part of the pages.
      await openPlayground("", { viewport: { width, height: 900 }, colorScheme, bypassCSP: true, reducedMotion: "reduce" });
      await audit("playground.html");
      await type("#template-editor", "{dynamic x}{optional *::y}{nothing}{/optional}{/dynamic}{optional x}");
      await page.locator("#list .error").first().waitFor();
      await page.getByRole("tab", { name: "Blocks" }).click();
      await button("+ Partial").click();
      await audit("playground.html error");
      for (const name of width === 1440 ? pages.filter((each) => each !== "playground.html") : MAIN) {
        await page.goto(SITE + name);
        if (MAIN.includes(name)) {
          await page.locator(".edit").first().click();
          await page.locator(".live output", { hasText: /s$|no page/ }).waitFor();
        }
        await audit(name);
      }
      assert.deepEqual(found, []);
    });
  }
}
