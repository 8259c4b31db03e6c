// The language of templates for the editor: tags in braces within HTML.

import { StreamLanguage, type StreamParser, type StringStream, syntaxHighlighting } from "@codemirror/language";
import { clike } from "@codemirror/legacy-modes/mode/clike";
import { html } from "@codemirror/legacy-modes/mode/xml";
import { tagHighlighter, tags as t } from "@lezer/highlight";

const KEYWORD = /^(?:!?optional|\/optional|r?dynamic|\/r?dynamic|include|addslashes|htmlentities|htmlspecialchars|rawurlencode)/;

type Place = "text" | "begin" | "name" | "reference" | "file" | "compared" | "ignored" | "swallowed";

interface TemplateState {
  place: Place;
  keyword: string;
  html: object;
}

const htmlMode = html as StreamParser<any>;

export const template: StreamParser<TemplateState> = {
  name: "template",
  startState: (unit) => ({ place: "text", keyword: "", html: htmlMode.startState!(unit) }),
  copyState: (state) => ({ ...state, html: { ...state.html } }),
  token(stream, state) {
    switch (state.place) {
      case "text":
        return inText(stream, state);
      case "begin":
        return atBegin(stream, state);
      case "swallowed":
        stream.skipToEnd();
        return "invalid";
      default:
        return inTag(stream, state);
    }
  },
  languageData: { commentTokens: { block: { open: "<!--", close: "-->" } } },
};

function inText(stream: StringStream, state: TemplateState): string | null {
  if (stream.match("{{") || stream.match("}}")) {
    return "escape";
  }
  if (stream.match(/^\{(?![ \t]|$)/)) {
    state.place = "begin";
    return "brace";
  }
  // HTML's own mode reads up to the next brace that counts.
  const line = stream.string;
  const next = line.slice(stream.pos + 1).search(/\{\{|\}\}|\{(?![ \t]|$)/);
  stream.string = next < 0 ? line : line.slice(0, stream.pos + 1 + next);
  const style = htmlMode.token(stream, state.html);
  stream.string = line;
  return style;
}

function atBegin(stream: StringStream, state: TemplateState): string | null {
  const match = stream.match(KEYWORD) as RegExpMatchArray | null;
  state.keyword = match?.[0] ?? "";
  if (!match) {
    state.place = "reference";
    return inTag(stream, state);
  }
  if (state.keyword.startsWith("/")) {
    state.place = "ignored";
  } else if (state.keyword === "include") {
    state.place = "file";
  } else {
    state.place = state.keyword.endsWith("dynamic") ? "name" : "reference";
  }
  return /^(?:include|!?optional|\/|r?dynamic)/.test(state.keyword) ? "keyword" : "builtin";
}

function inTag(stream: StringStream, state: TemplateState): string | null {
  if (stream.eat("}")) {
    state.place = "text";
    return "brace";
  }
  if (stream.eat("{")) {
    state.place = "swallowed";
    return "invalid";
  }
  if (state.place === "name") {
    state.place = "reference";
    if (stream.match(/^[^,{}]+(?=,)/)) {
      return "labelName";
    }
  }
  if (state.place === "compared" && stream.match(/^[^{}]+/)) {
    return "string";
  }
  if (stream.eatSpace()) {
    // Behind the first blank stands the value to compare with.
    const isBehind = state.keyword.endsWith("optional") && !/optional\s*$/.test(stream.string.slice(0, stream.pos));
    state.place = isBehind ? "compared" : state.place;
    return null;
  }
  if (state.place === "file" && stream.match(/^[^{}]+/)) {
    return "string";
  }
  if (state.place === "ignored" && stream.match(/^[^{}]+/)) {
    return "comment";
  }
  return inReference(stream, state);
}

function inReference(stream: StringStream, state: TemplateState): string | null {
  if (stream.match("::") || stream.eat(",")) {
    return "separator";
  }
  if (state.keyword === "" && stream.match(/^'[^{}]*/)) {
    return "string";
  }
  if (stream.match(/^(?:\[\*\]|\.?\*)(?=[\s}:]|$)/)) {
    return "atom";
  }
  if (stream.match(/^[^\s{}:,]+(?=::(?:\*|\[\*\]))/)) {
    return "labelName";
  }
  if (!stream.match(/^(?:[^\s{}:,]|:(?!:))+/)) {
    stream.next();
  }
  return "variableName.special";
}

// Classes rather than colours: the style sheet has those, and the manual's code, which is coloured beforehand, the same.
export const colours = tagHighlighter([
  { tag: [t.brace, t.separator], class: "t-tag" },
  { tag: t.keyword, class: "t-keyword" },
  { tag: [t.standard(t.variableName), t.function(t.variableName)], class: "t-function" },
  { tag: [t.special(t.variableName), t.variableName], class: "t-reference" },
  { tag: t.labelName, class: "t-loop" },
  { tag: t.atom, class: "t-loop t-strong" },
  { tag: [t.string, t.attributeValue], class: "t-string" },
  { tag: [t.escape, t.character], class: "t-escape" },
  { tag: [t.tagName, t.angleBracket, t.attributeName, t.propertyName], class: "t-html" },
  { tag: [t.number, t.bool, t.null], class: "t-number" },
  { tag: [t.comment, t.processingInstruction, t.documentMeta], class: "t-comment" },
  { tag: t.invalid, class: "t-invalid" },
]);

export const highlighting = syntaxHighlighting(colours);
export const templateLanguage = StreamLanguage.define(template);
// All of PHP, with HTML around it, would make the editors' script a quarter larger.
const words = (text: string) => Object.fromEntries(text.split(" ").map((word) => [word, true]));
export const phpLanguage = StreamLanguage.define(clike({
  name: "php",
  keywords: words("abstract array as bool break callable case catch class clone const continue declare default do echo else "
    + "elseif enum extends final finally float fn for foreach function if implements include instanceof int interface isset "
    + "list match mixed namespace never new object print private protected public readonly require return self static string "
    + "switch throw trait try unset use void while yield"),
  blockKeywords: words("catch do else elseif finally for foreach if match switch try while"),
  atoms: words("false null true"),
  multiLineStrings: true,
  hooks: {
    $: (stream: StringStream) => {
      stream.eatWhile(/\w/);
      return "variableName.special";
    },
    "<": (stream: StringStream) => stream.match("?php") ? "meta" : "operator",
    "#": (stream: StringStream) => {
      stream.skipToEnd();
      return "comment";
    },
  },
}));
export const htmlLanguage = StreamLanguage.define(htmlMode);
