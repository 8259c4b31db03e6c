// The playground as its reader uses it.

import assert from "node:assert/strict";
import { test } from "node:test";
import { unzipSync, strFromU8, strToU8, zipSync } from "fflate";
import { readFile } from "node:fs/promises";
import {
  button, openPlayground, page, picture, rendered, SITE, tab, type, typeData, typeTemplate, waitForText, WIDE,
} from "./browser.mjs";

const notice = () => page.locator("#notice");
const editor = () => page.locator("#template-editor .cm-content");

test("what is typed is rendered: page, source, time, tree and version", async () => {
  await openPlayground();
  await picture("playground");
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
  assert.equal(await page.locator("#tree li li").count(), 2);
  await waitForText(page.locator("#tree .settled"), "2 rounds");
  await waitForText(page.locator("#version"), /runs template \d+\.\d+\.\d+ on PHP \d/);
});

test("an error is underlined at its place and the list leads there, also in a partial", async () => {
  await openPlayground();
  await typeTemplate("😀 {optional a}x\n{include part.tpl}");
  const error = page.locator("#list .error");
  await waitForText(error, "Missing closing tag");
  assert.equal(await page.locator("#template-editor .cm-lintRange-error").textContent(), "{optional a}");
  await page.locator("#template-editor .cm-lintRange-error").hover();
  await waitForText(page.locator(".cm-tooltip-lint"), "Missing closing tag");
  await picture("playground-error");

  await button("+ Partial").click();
  await typeTemplate("ab\n{dynamic b}{/optional}");
  await waitForText(error, "part.tpl:2:12");
  await page.getByRole("tab", { name: "page.tpl" }).click();
  await button("part.tpl:2:12").click();
  assert.equal(await page.locator("#files [aria-selected=true]").textContent(), "part.tpl");
  await waitForText(page.locator("#template-editor .cm-activeLine"), "{dynamic b}");

  await typeData('{"a": 1,\n "b": [1, 2}');
  await waitForText(error, "data.json:2:12");
  assert.equal(await page.locator("#data-editor .cm-lintRange-error, #data-editor .cm-lintPoint-error").count(), 1);
});

test("partials are added, renamed under names that are checked, deleted and brought back", async () => {
  await openPlayground();
  await typeTemplate("[{include box/side.tpl}]");
  await button("+ Partial").click();
  for (const [name, fault] of [["", "needs a name"], ["page.tpl", "Another file"], ["data.json", "Another file"], [".a", "dot"],
    ["a/../b", "dot"], ["/a", "slash"], ["a b", "Letters"], ["page.tpl/a", "same name"], ["box/side.tpl", ""]]) {
    await page.locator("#name").fill(name);
    assert.match(await page.locator("#name-fault").textContent(), fault ? new RegExp(fault) : /^$/, name);
    assert.equal(await page.locator("#name").getAttribute("aria-invalid"), String(fault !== ""));
  }
  await page.keyboard.press("Enter");
  await typeTemplate("in the box");
  await waitForText(rendered(), "[in the box]");
  await button("Delete").click();
  await waitForText(rendered(), "[]");
  await waitForText(page.locator("#list .warning"), "there is no file");
  await notice().getByRole("button", { name: "Undo" }).click();
  await waitForText(rendered(), "[in the box]");
});

test("a link restores what one sees, and a broken one does no harm", async () => {
  await openPlayground();
  await typeTemplate("<i>{greeting} {include more.tpl}</i>");
  await typeData({ greeting: "Grüße 😀" });
  await button("+ Partial").click();
  await page.locator("#name").fill("more.tpl");
  await page.keyboard.press("Enter");
  await typeTemplate("from a partial");
  await tab("Blocks").click();
  await button("Copy link").click();
  await button("Copied").waitFor();
  const link = await page.evaluate(() => navigator.clipboard.readText());

  await openPlayground(new URL(link).hash);
  assert.equal(await page.locator("#files [aria-selected=true]").textContent(), "more.tpl");
  await waitForText(editor(), "from a partial");
  assert.equal(await page.locator("#views [aria-selected=true]").textContent(), "Blocks");
  await waitForText(page.locator("#tree .tag"), "{greeting}");
  assert.equal(await page.locator("#example option:checked").textContent(), "A page of your own");
  await tab("Page").click();
  assert.equal(await rendered().innerText(), "Grüße 😀 from a partial");

  await openPlayground("#1-AAAA");
  await waitForText(page.locator("#list"), "link is broken");
});

test("work isn't lost: another example can be undone, earlier work comes back, reset goes to the example", async () => {
  await openPlayground();
  await typeTemplate("my work");
  await waitForText(rendered(), "my work");
  await button("Next example").click();
  await waitForText(rendered(), "Roxy");
  await notice().getByRole("button", { name: "Undo" }).click();
  await waitForText(rendered(), "my work");
  assert.equal(await page.locator("#example option:checked").textContent(), "Start here");

  await page.locator("#example").selectOption("3");
  await waitForText(rendered(), "Map");
  await page.reload();
  await page.locator("#time", { hasText: "bytes" }).waitFor();
  await button("History").click();
  await picture("playground-history");
  await page.locator("#earlier li button", { hasText: "my work" }).click();
  await waitForText(rendered(), "my work");

  await page.locator("#example").selectOption("0");
  await waitForText(rendered(), "Bean & Leaf");
  assert.ok(await notice().isHidden(), "nothing was changed, so there is nothing to bring back");
  await typeTemplate("changed");
  await waitForText(rendered(), "changed");
  await button("Reset").click();
  await waitForText(rendered(), "Bean & Leaf");
  await button("History").click();
  assert.equal(await page.locator("#earlier li button").count(), 2);
  await button("Forget all").click();
  assert.equal(await page.locator("#earlier li button").count(), 0);
});

test("a set of files goes out as one .zip and comes back, also as single files", async () => {
  await openPlayground();
  await typeTemplate("{greeting} from {include parts/who.tpl}");
  await typeData({ greeting: "Grüße" });
  await button("+ Partial").click();
  await page.locator("#name").fill("parts/who.tpl");
  await page.keyboard.press("Enter");
  await typeTemplate("Ann");
  await waitForText(rendered(), "Grüße from Ann");
  const [download] = await Promise.all([page.waitForEvent("download"), button("Save").click()]);
  const zip = await readFile(await download.path());
  const files = unzipSync(zip);
  assert.deepEqual(Object.keys(files).sort(), ["data.json", "page.tpl", "parts/style.tpl", "parts/who.tpl"]);
  assert.equal(strFromU8(files["page.tpl"]), "{greeting} from {include parts/who.tpl}");

  const upload = (...all) => page.locator("#upload-files").setInputFiles(
    all.map(([name, content]) => ({ name, mimeType: "application/octet-stream", buffer: Buffer.from(content) })));
  await button("Reset").click();
  await waitForText(rendered(), "Bean & Leaf");
  await upload(["template.zip", zip]);
  await waitForText(rendered(), "Grüße from Ann");
  await upload(["any.html", "{a} {include b.tpl}"], ["b.tpl", "B"], ["sample.json", '{"a": "A"}']);
  await waitForText(rendered(), "A B");
  assert.match(await page.locator("#files").textContent(), /^page\.tpl\s*b\.tpl$/);

  for (const [name, content, words] of [["no.zip", "no zip", "can’t be read"], ["data.json", "{}", "no template"],
    ["big.zip", zipSync({ "page.tpl": new Uint8Array(2 << 20) }), "more than 1 MB"],
    ["up.zip", zipSync({ "page.tpl": strToU8("x"), "../up.tpl": strToU8("y") }), "dot"]]) {
    await upload([name, content]);
    await waitForText(page.locator("#list"), words);
    assert.match(await rendered().innerText(), /A B/, name);
  }
});

test("warnings about security come when they are wanted, also the next time", async () => {
  await openPlayground();
  await typeTemplate("<p title={a}>text");
  await typeData({ a: "x" });
  await waitForText(rendered(), "text");
  const noWarning = () => page.waitForFunction(() => !document.querySelector("#list .warning"));
  await noWarning();
  await page.getByLabel("Security").check();
  await page.locator("#list .warning").first().waitFor();
  await page.reload();
  await page.locator("#list .warning").first().waitFor();
  await page.getByLabel("Security").uncheck();
  await noWarning();
});

test("a script in place of a page keeps its name, and no other file can take it", async () => {
  await openPlayground();
  await page.locator("#upload-files").setInputFiles([
    ["script.php", "<?php\necho template('a.tpl', $data), PHP_VERSION_ID > 80000;"], ["a.tpl", "{a}!"], ["data.json", '{"a": "A"}'],
  ].map(([name, content]) => ({ name, mimeType: "text/plain", buffer: Buffer.from(content) })));
  await waitForText(rendered(), "A!1");
  await waitForText(page.locator("#time"), "bytes");
  assert.ok(await page.locator("#partial").isHidden());
  await tab("a.tpl").click();
  await page.locator("#name").fill("script.php");
  assert.match(await page.locator("#name-fault").textContent(), /same name|has this name/);
});

test("each example renders; the error's example shows its error", async () => {
  await openPlayground();
  const titles = await page.locator("#example option:not([hidden])").allTextContents();
  assert.ok(titles.length >= 10, titles.join());
  for (const [number, title] of titles.entries()) {
    if (number > 0) {
      await button("Next example").click();
    }
    const isWrong = title.includes("wrong");
    await page.locator("#list .error").or(page.locator("#time", { hasText: "bytes" })).first().waitFor();
    await page.waitForTimeout(300);
    assert.deepEqual(await page.locator("#list .error span").allTextContents(), isWrong ? ["Missing closing tag"] : [], title);
    assert.equal(await page.locator("#time").textContent() === "no page", isWrong, title);
  }
  assert.ok(await button("Next example").isDisabled());
  await page.locator("#example").selectOption({ label: titles[5] });
  await waitForText(rendered(), "Night Train");
});

test("all of it can be reached by keyboard", async () => {
  await openPlayground();
  const reached = [];
  for (let steps = 0; steps < 30; steps++) {
    await page.keyboard.press("Tab");
    reached.push(await page.evaluate(() => document.activeElement.id || document.activeElement.textContent.slice(0, 20)
      + (document.activeElement.closest(".editor")?.id ?? "")));
    if (reached.at(-1).includes("-editor")) {
      await page.keyboard.press("Escape");
    }
  }
  for (const part of ["search", "theme", "example", "next", "reset", "history", "upload", "download", "share", "page.tpl", "add",
    "template-editor", "data-editor", "Page"]) {
    assert.ok(reached.some((each) => each.includes(part)), `${part} is not among ${reached.join(" | ")}`);
  }
  await tab("Page").focus();
  await page.keyboard.press("ArrowRight");
  await page.keyboard.press("ArrowRight");
  assert.equal(await page.evaluate(() => document.activeElement.textContent), "Blocks");
  await page.locator("#tree .tag").first().waitFor();
});

test("a narrow window: nothing is cut off, tabs keep their height, the page comes below its template", async () => {
  await openPlayground("", { viewport: { width: 390, height: 844 } });
  assert.equal(await page.evaluate(() => document.documentElement.scrollWidth > innerWidth), false);
  for (let number = 0; number < 8; number++) {
    await button("+ Partial").click();
  }
  for (const tabs of ["#files", "#views"]) {
    const { height } = await page.locator(`${tabs} [aria-selected=true]`).boundingBox();
    assert.ok(height >= 30, `${tabs} is ${height} high`);
  }
  const [template, output] = await Promise.all(["#templates", "#output"].map((id) => page.locator(id).boundingBox()));
  assert.ok(output.y >= template.y + template.height);
  assert.equal(await page.evaluate(() => document.documentElement.scrollWidth > innerWidth), false);
  await picture("playground-390");
});

test("the reader's choice of colours holds on the next page", async () => {
  await openPlayground("", { viewport: WIDE, colorScheme: "light" });
  const back = () => page.evaluate(() => Number(/\d+/.exec(getComputedStyle(document.body).backgroundColor)[0]));
  assert.ok(await back() > 200);
  await button("Dark colours").click();
  assert.ok(await back() < 60);
  await page.goto(`${SITE}guide.html`);
  assert.ok(await back() < 60);
});
