// The editors: of templates, of data, and the one that only shows a page's source.

import { defaultKeymap, history, historyKeymap } from "@codemirror/commands";
import { json } from "@codemirror/lang-json";
import { bracketMatching, indentOnInput } from "@codemirror/language";
import { type Diagnostic, lintGutter, lintKeymap, setDiagnostics } from "@codemirror/lint";
import { EditorState, type Extension } from "@codemirror/state";
import {
  drawSelection, EditorView, highlightActiveLine, highlightActiveLineGutter, keymap, lineNumbers,
} from "@codemirror/view";
import { highlighting, htmlLanguage, phpLanguage, templateLanguage } from "./mode";
import type { Problem } from "./problems";

const look: Extension = [lineNumbers(), drawSelection(), EditorView.lineWrapping, highlighting];

function editing(label: string, onChange: () => void): Extension {
  return [
    look,
    history(),
    highlightActiveLine(),
    highlightActiveLineGutter(),
    bracketMatching(),
    indentOnInput(),
    lintGutter(),
    EditorState.tabSize.of(2),
    keymap.of([...defaultKeymap, ...historyKeymap, ...lintKeymap]),
    EditorView.contentAttributes.of({ "aria-label": label, tabindex: "0", spellcheck: "false", autocapitalize: "off" }),
    EditorView.updateListener.of((update) => update.docChanged && onChange()),
  ];
}

/** The name tells the language. */
export function fileState(name: string, text: string, onChange: () => void): EditorState {
  const [label, language] = name.endsWith(".php") ? [`Script ${name}`, phpLanguage] : [`Template ${name}`, templateLanguage];
  return EditorState.create({ doc: text, extensions: [editing(label, onChange), language] });
}

export function dataState(text: string, onChange: () => void): EditorState {
  return EditorState.create({ doc: text, extensions: [editing("Data, as JSON", onChange), json()] });
}

export function sourceState(text: string): EditorState {
  return EditorState.create({
    doc: text,
    extensions: [
      look,
      htmlLanguage,
      EditorState.readOnly.of(true),
      EditorView.contentAttributes.of({ "aria-label": "Source of the page", tabindex: "0", "aria-readonly": "true" }),
    ],
  });
}

/** Where a line and a column are; columns count characters, the editor counts the halves of a surrogate pair. */
export function offsetOf(state: EditorState, line: number, column: number): number {
  const { from, text } = state.doc.line(Math.min(Math.max(line, 1), state.doc.lines));
  return from + [...text].slice(0, column - 1).join("").length;
}

export function underline(view: EditorView, problems: Problem[]): void {
  const { state } = view;
  const diagnostics = problems.map((problem): Diagnostic => {
    const from = offsetOf(state, problem.line ?? 1, problem.column ?? 1);
    const to = Math.max(offsetOf(state, problem.endLine ?? 1, problem.endColumn ?? 1), Math.min(from + 1, state.doc.length));
    return {
      from,
      to,
      severity: problem.severity,
      message: [problem.message, ...(problem.notes ?? [])].join("\n"),
    };
  });
  view.dispatch(setDiagnostics(state, diagnostics));
}

export function jumpTo(view: EditorView, line: number, column: number): void {
  const anchor = offsetOf(view.state, line, column);
  view.dispatch({ selection: { anchor }, effects: EditorView.scrollIntoView(anchor, { y: "center" }) });
  view.focus();
}
