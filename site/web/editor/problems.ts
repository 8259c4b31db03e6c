// The list of what is wrong, each with the way to its place.

import type { Finding, Result } from "../../../wasm/web/engine";
import { DATA } from "./state";

/** What the checker has found, or a sentence that belongs to no place. */
export type Problem = Finding | (Partial<Finding> & Pick<Finding, "severity" | "message">);

/** All that the engine and the checker say, each thing once, errors first. */
export function problemsOf(result: Result): Problem[] {
  const errors = result.findings.filter(isError);
  const told = new Set(errors.map((error) => `${error.message} in ${error.file}`));
  const untold = result.messages.filter((message) => !told.has(message));
  const severity = result.page === null ? "error" : "warning";
  const more = result.more ? `… and ${result.more} more` : null;
  const all = [
    ...result.findings,
    ...sentences(severity, [result.stopped, ...untold]),
    ...sentences("warning", [result.unchecked, more]),
  ];
  return [...all.filter(isError), ...all.filter((problem) => !isError(problem))];
}

const isError = (problem: Problem) => problem.severity === "error";

/** Of a request that isn't served: broken data has a place. */
export function problemsOfRefusal(message: string): Problem[] {
  const place = /^data\.json:(\d+):(\d+): (.*)$/s.exec(message);
  if (!place) {
    return [{ severity: "error", message }];
  }
  const [line, column] = [Number(place[1]), Number(place[2])];
  return [{ severity: "error", file: DATA, line, column, endLine: line, endColumn: column, message: place[3] }];
}

const sentences = (severity: Problem["severity"], messages: (string | null)[]): Problem[] =>
  messages.filter((message) => message !== null).map((message) => ({ severity, message }));

type OnOpen = (file: string, line: number, column: number) => void;

export function showProblems(list: HTMLElement, count: HTMLElement, problems: Problem[], onOpen: OnOpen): void {
  list.replaceChildren(...problems.map((problem) => {
    const item = document.createElement("li");
    item.className = problem.severity;
    item.append(place(problem, onOpen), text("b", problem.severity), " ", text("span", problem.message));
    for (const note of problem.notes ?? []) {
      item.append(text("small", note));
    }
    for (const from of problem.includedFrom ?? []) {
      item.append(text("small", `included from ${from.file}:${from.line}:${from.column}`));
    }
    return item;
  }));
  const errors = problems.filter(isError).length;
  const parts = [number(errors, "error"), number(problems.length - errors, "warning")];
  count.textContent = parts.filter(Boolean).join(", ") || "none";
}

function place(problem: Problem, onOpen: OnOpen): HTMLElement | string {
  const { file, line, column } = problem;
  if (file === undefined || line === undefined || column === undefined) {
    return "";
  }
  const button = text("button", `${file}:${line}:${column}`) as HTMLButtonElement;
  button.type = "button";
  button.onclick = () => onOpen(file, line, column);
  return button;
}

function text(name: string, content: string): HTMLElement {
  const element = document.createElement(name);
  element.textContent = content;
  return element;
}

function number(count: number, what: string): string {
  return count === 0 ? "" : `${count} ${what}${count === 1 ? "" : "s"}`;
}
