// The pages of the site. build.mjs runs this with what it has made before: the examples and the highlighter.

import { existsSync, readdirSync, readFileSync } from "node:fs";
import { join } from "node:path";
import { POLICY } from "./headers.mjs";
import { manualMarkdown } from "./manual/markdown.mjs";
import { FILES, MANUAL } from "./manual/pages.mjs";

const json = (value) => JSON.stringify(value).replaceAll("<", "\\u003c");

export default function configure(config) {
  const { ROOT } = process.env;
  const { examples, highlight, version, found } = globalThis.site;
  const manual = MANUAL.filter(({ source }) => existsSync(join(ROOT, source)));
  // A page of docs/ that the menu doesn't name yet stands at its end.
  for (const name of readdirSync(join(ROOT, "docs")).filter((each) => each.endsWith(".md"))) {
    const source = `docs/${name}`;
    if (!manual.some((each) => each.source === source)) {
      const menu = /^# (.*)$/m.exec(readFileSync(join(ROOT, source), "utf8"))[1];
      manual.push({ source, url: name.replace(/md$/, "html"), menu });
    }
  }
  const pages = Object.fromEntries([...manual, ...FILES].map((page) => [page.source, page]));
  const md = manualMarkdown({ examples: examples.pages, highlight, pages });

  for (const [at, page] of manual.entries()) {
    const text = readFileSync(join(ROOT, page.source), "utf8");
    const env = { source: page.source, sections: [] };
    const html = md.render(text, env);
    const [title, ...sections] = env.sections;
    found.push(...env.sections.map(({ id, title: heading, text: content }) => ({
      page: page.menu, url: id === title.id ? page.url : `${page.url}#${id}`, title: heading, text: content,
    })));
    config.addTemplate(`${page.url}.njk`, "{{ html | safe }}", {
      layout: "manual.njk", permalink: page.url, title: title.title, description: firstSentences(html), source: page.source, html,
      sections: sections.filter(({ level }) => level === 2),
      examples: json(live(examples.pages[page.source.replace("docs/", "")] ?? [])),
      previous: manual[at - 1], next: manual[at + 1],
    });
  }
  const welcome = examples.pages["README.md"].find(({ state }) => state);
  config.addGlobalData("site", { manual, version, policy: POLICY });
  config.addGlobalData("landing", {
    examples: json([welcome]),
    template: highlight(welcome.state.files["page.tpl"].trimEnd(), "template"),
    data: highlight(welcome.state.data, "json"),
    result: highlight(welcome.text.trimEnd(), "output"),
  });
  config.addGlobalData("playgroundExamples", json(examples.playground));
  return {
    dir: { input: "pages", includes: "../layouts", output: process.env.OUTPUT },
    markdownTemplateEngine: false,
  };
}

/** What search engines show of a page: as much of its first paragraph as they take. */
function firstSentences(html) {
  const text = /<p>(.*?)<\/p>/s.exec(html)[1].replace(/<[^>]*>|\s+/g, (each) => each[0] === "<" ? "" : " ")
    .replace(/&(amp|lt|gt|quot);/g, (each, name) => ({ amp: "&", lt: "<", gt: ">", quot: '"' })[name]);
  return text.length <= 160 ? text : `${text.slice(0, 160).replace(/\s\S*$/, "")} …`;
}

/** What a page must know of its examples. */
const live = (all) => all.map(({ kind, state, reason, text, warnings }) => ({ kind, state, reason, text, warnings }));
