// How the manual's Markdown becomes HTML: its links lead to the site's pages, and each example stands in one frame from which
// it can be edited.

import markdownIt from "markdown-it";
import { slug } from "./slug.mjs";

const LABELS = { template: "Template", output: "Result", warning: "Warning", php: "Data" };
const PART = { template: "template", output: "result", warning: "warning", php: "data" };

/**
 * `examples`: those of a page by its name, `highlight`: code and language to HTML, `pages`: the site's page for a path.
 * A page is rendered with {source: its path, sections: []}; the sections are filled with {id, title, text}.
 */
export function manualMarkdown({ examples, highlight, pages }) {
  const md = markdownIt({ html: true });
  md.core.ruler.push("anchors", (state) => anchors(state, md));
  md.core.ruler.push("links", (state) => state.tokens.forEach((token) => rewrite(token, state.env, pages)));
  md.core.ruler.push("examples", (state) => frame(state, examples[state.env.source.replace("docs/", "")] ?? []));
  md.core.ruler.push("sections", (state) => collect(state));
  md.renderer.rules.fence = (tokens, at) => code(tokens[at], highlight);
  // What is in a comment is for the test suite.
  md.renderer.rules.html_block = (tokens, at) => tokens[at].content.startsWith("<!--") ? "" : tokens[at].content;
  md.renderer.rules.table_open = (tokens, at) => `<div class="table"${tokens[at].meta?.wide ? ' tabindex="0"' : ""}><table>\n`;
  // The corner of a table is no heading.
  md.renderer.rules.th_open = (tokens, at) => tokens[at + 1].content ? "<th>" : "<td>";
  md.renderer.rules.th_close = (tokens, at) => tokens[at - 1].content ? "</th>" : "</td>";
  md.renderer.rules.table_close = () => "</table></div>\n";
  return md;
}

function anchors(state, md) {
  const used = new Set();
  for (const [at, token] of state.tokens.entries()) {
    if (token.type === "heading_open") {
      const text = plain(state.tokens[at + 1]);
      let id = slug(text);
      for (let number = 1; used.has(id); number++) {
        id = `${slug(text)}-${number}`;
      }
      used.add(id);
      token.attrSet("id", id);
      if (token.tag !== "h1") {
        const link = new state.Token("html_inline", "", 0);
        link.content = ` <a class="anchor" href="#${id}" aria-label="Link to “${md.utils.escapeHtml(text)}”">#</a>`;
        state.tokens[at + 1].children.push(link);
      }
    }
    if (token.type === "table_open") {
      const end = state.tokens.findIndex((each, position) => position > at && each.type === "thead_close");
      token.meta = { wide: state.tokens.slice(at, end).filter((each) => each.type === "th_open").length > 4 };
    }
  }
}

const plain = (inline) => inline.children.map((each) => each.type === "softbreak" ? " "
  : ["text", "code_inline"].includes(each.type) ? each.content : "").join("");

function rewrite(token, env, pages) {
  for (const [at, child] of (token.children ?? []).entries()) {
    const name = child.type === "link_open" ? "href" : child.type === "image" ? "src" : null;
    const target = name && child.attrGet(name);
    if (target && !/^(https?:|mailto:|#)/.test(target)) {
      const [path, anchor] = target.split("#");
      const resolved = new URL(path, `file:///${env.source}`).pathname.slice(1);
      if (!pages[resolved]) {
        throw new Error(`${env.source}: the link to ${target} leads to nothing on the site`);
      }
      child.attrSet(name, pages[resolved].url + (anchor ? `#${anchor}` : ""));
      // In the sources a page is called by its file's name.
      const text = token.children[at + 1];
      if (text?.type === "text" && text.content.endsWith(".md")) {
        text.content = pages[resolved].menu;
      }
    }
  }
}

/** Blocks that follow each other up to an outcome become one figure; rows of tables carry the number of their example. */
function frame(state, examples) {
  const { tokens } = state;
  const byOutcome = new Map(examples.map((example, number) => [example.outcomeLine, number]));
  const byRow = new Map(examples.map((example, number) => [example.kind === "row" ? example.line : 0, number]));
  const line = (token) => token.map[0] + 1;
  const kind = (token) => token?.type === "fence" ? token.info.split(" ")[0] : "";
  const isOutcome = (token) => ["output", "warning"].includes(kind(token));
  const isPart = (token) => kind(token) === "template" || kind(token) === "php" && !/^php \S/.test(token.info);
  const result = [];
  for (let at = 0; at < tokens.length; at++) {
    if (tokens[at].type === "tr_open" && byRow.has(line(tokens[at]))) {
      tokens[at].attrSet("data-example", String(byRow.get(line(tokens[at]))));
    }
    let end = at;
    while (isPart(tokens[end])) {
      end++;
    }
    const first = end;
    while (isOutcome(tokens[end])) {
      end++;
    }
    if (end === first) {
      result.push(...tokens.slice(at, Math.max(at + 1, first)));
      at = Math.max(at, first - 1);
      continue;
    }
    const number = byOutcome.get(line(tokens[end - 1]));
    const example = examples[number];
    const parts = tokens.slice(at, end);
    parts.forEach((part) => { part.meta = { example }; });
    const open = new state.Token("html_block", "", 0);
    const hasBoth = parts.some((part) => kind(part) === "template");
    open.content = `<figure class="example${hasBoth ? "" : " single"}" data-example="${number}">\n`;
    const close = new state.Token("html_block", "", 0);
    close.content = "</figure>\n";
    result.push(open, ...parts, close);
    at = end - 1;
  }
  state.tokens = result;
}

/** The texts that the search looks at: one for each heading, with all below it up to the next one. */
function collect(state) {
  const { sections } = state.env;
  const { tokens } = state;
  for (const [at, token] of tokens.entries()) {
    if (token.type === "heading_open") {
      sections.push({ id: token.attrGet("id"), level: Number(token.tag[1]), title: plain(tokens[at + 1]), text: "" });
    } else if (sections.length && tokens[at - 1]?.type !== "heading_open") {
      const text = token.type === "inline" ? plain(token) : token.type === "fence" ? token.content : "";
      sections.at(-1).text += text ? `${text} ` : "";
    }
  }
}

function code(token, highlight) {
  const [language, name] = token.info.split(" ");
  const text = token.content.replace(/\n$/, "");
  const isScript = token.meta?.example?.kind === "script";
  const label = name ?? (language === "php" && token.meta && !isScript ? LABELS.php : token.meta && language !== "php" ? LABELS[language] : "");
  const caption = label ? `<span class="label">${label}</span>` : "";
  const part = token.meta && !(isScript && language === "php") ? PART[language] : "plain";
  return `<div class="code ${part}">${caption}<pre><code>${highlight(text, language) || " "}</code></pre></div>\n`;
}
