// Colours the code of the manual with the editors' own grammars.

import { StreamLanguage } from "@codemirror/language";
import { jsonLanguage } from "@codemirror/lang-json";
import { phpLanguage } from "@codemirror/lang-php";
import { nginx } from "@codemirror/legacy-modes/mode/nginx";
import { properties } from "@codemirror/legacy-modes/mode/properties";
import { shell } from "@codemirror/legacy-modes/mode/shell";
import { dockerFile } from "@codemirror/legacy-modes/mode/dockerfile";
import { yaml } from "@codemirror/legacy-modes/mode/yaml";
import type { Parser } from "@lezer/common";
import { highlightCode } from "@lezer/highlight";
import { colours, htmlLanguage, templateLanguage } from "../web/editor/mode";

const PARSERS: Record<string, Parser> = {
  template: templateLanguage.parser,
  output: htmlLanguage.parser,
  json: jsonLanguage.parser,
  php: phpLanguage.configure({ top: "Program" }).parser,
  sh: StreamLanguage.define(shell).parser,
  ini: StreamLanguage.define(properties).parser,
  nginx: StreamLanguage.define(nginx).parser,
  yaml: StreamLanguage.define(yaml).parser,
  dockerfile: StreamLanguage.define(dockerFile).parser,
};

export const escape = (text: string) => text.replaceAll("&", "&amp;").replaceAll("<", "&lt;").replaceAll('"', "&quot;");

/** HTML with the class of each token; code of a language that isn't known stays plain. */
export function highlight(code: string, language: string): string {
  const parser = PARSERS[language];
  if (!parser) {
    return escape(code);
  }
  let html = "";
  // PHP's parser reads from "<?php" on.
  const before = language === "php" && !code.startsWith("<?php") ? "<?php\n" : "";
  highlightCode(before + code, parser.parse(before + code), colours,
    (text, classes) => { html += classes ? `<span class="${classes}">${escape(text)}</span>` : escape(text); },
    () => { html += "\n"; });
  return before ? html.slice(html.indexOf("\n") + 1) : html;
}
