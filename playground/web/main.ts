// The playground: what is typed goes to the server, and what it answers is shown.

import { EditorView } from "@codemirror/view";
import type { EditorState } from "@codemirror/state";
import { dataState, jumpTo, sourceState, templateState, underline } from "./editors";
import { showProblems, type Problem } from "./problems";
import { type Example, examples, Refused, render, type Result } from "./server";
import { fromFragment, PAGE, type State, toFragment, type View, VIEWS } from "./state";
import { showTabs } from "./tabs";
import { showTree } from "./tree";

const PAUSE = 150;
const DATA = "data.json";
const VIEW_LABELS: Record<View, string> = { page: "Page", source: "Source", tree: "Blocks" };
// A fragment without a style of its own looks like a page; anything that the page says counts more. Links lead nowhere:
// new windows are forbidden to the frame.
const BASE = "<base target=_blank><style>:where(html){font:16px/1.5 system-ui,sans-serif}:where(body){margin:1rem}</style>";

const element = <T extends HTMLElement = HTMLElement>(id: string) => document.getElementById(id) as T;

let names: string[] = [];
const states = new Map<string, EditorState>();
let open = PAGE;
let view: View = "page";
let offered: Example[] = [];
let problems: Problem[] = [];
let shownPage: string | null = null;
let timer = 0;
let request: AbortController | null = null;

const templates = new EditorView({ parent: element("template-editor") });
const data = new EditorView({ parent: element("data-editor") });
const source = new EditorView({ parent: element("source") });

function current(): State {
  states.set(open, templates.state);
  const files = names.map((name) => ({ name, text: states.get(name)!.doc.toString() }));
  return { files, data: data.state.doc.toString(), open, view };
}

function load(state: State): void {
  states.clear();
  names = state.files.map((file) => file.name);
  for (const file of state.files) {
    states.set(file.name, templateState(file.name, file.text, changed));
  }
  data.setState(dataState(state.data, changed));
  view = state.view;
  shownPage = null;
  open = state.open;
  templates.setState(states.get(open)!);
  problems = [];
  showFiles();
  showViews();
  changed(0);
}

function changed(pause: unknown = PAUSE): void {
  clearTimeout(timer);
  timer = window.setTimeout(update, typeof pause === "number" ? pause : PAUSE);
}

async function update(): Promise<void> {
  const state = current();
  request?.abort();
  request = new AbortController();
  const { signal } = request;
  try {
    history.replaceState(null, "", await toFragment(state));
    const result = await render(state.files, state.data, signal);
    if (!signal.aborted) {
      showResult(result);
    }
  } catch (error) {
    if (!signal.aborted) {
      showRefusal(error instanceof Refused ? error.message : String(error));
    }
  }
}

function showResult(result: Result): void {
  showFailure("");
  const errors = result.findings.filter((finding) => finding.severity === "error");
  problems = result.findings.map((finding) => ({ ...finding }));
  const told = new Set(errors.map((error) => `${error.message} in ${error.file}`));
  const untold = result.messages.filter((message) => !told.has(message));
  const severity = result.page === null ? "error" : "warning";
  problems.push(...[result.stopped, ...untold].filter((message) => message !== null)
    .map((message): Problem => ({ severity, message })));
  problems.push(...[...result.unreadable, result.unchecked].filter((message) => message !== null)
    .map((message): Problem => ({ severity: "warning", message })));
  if (result.more) {
    problems.push({ severity: "warning", message: `… and ${result.more} more` });
  }
  markAll();
  showPage(result.page);
  showTree(element("tree"), result.tree, jump);
  const { nanoseconds, size, page } = result;
  element("time").textContent = page === null ? noPage() : `${duration(nanoseconds!)} · ${bytes(size!)}`;
}

/** The data is broken, or the server refuses: the last page stays, out of focus. */
function showRefusal(message: string): void {
  const place = /^data\.json:(\d+):(\d+): (.*)$/s.exec(message);
  problems = [];
  if (place) {
    const [line, column] = [Number(place[1]), Number(place[2])];
    problems = [{ severity: "error", file: DATA, line, column, endLine: line, endColumn: column, message: place[3] }];
  }
  showFailure(place ? "" : message);
  markAll();
  showPage(null);
  element("time").textContent = noPage();
}

function showPage(page: string | null): void {
  element("output").classList.toggle("stale", page === null);
  if (page !== null && page !== shownPage) {
    shownPage = page;
    element<HTMLIFrameElement>("page").srcdoc = BASE + page;
    source.setState(sourceState(page));
  } else if (shownPage === null) {
    element<HTMLIFrameElement>("page").srcdoc = "";
    source.setState(sourceState(""));
  }
}

function noPage(): string {
  return shownPage === null ? "no page" : "no page: this is the last good one";
}

function showFailure(message: string): void {
  element("failure").hidden = message === "";
  element("failure").textContent = message;
}

function markAll(): void {
  underline(templates, problems.filter((problem) => problem.file === open));
  underline(data, problems.filter((problem) => problem.file === DATA));
  showProblems(element("list"), element("count"), problems, jump);
  showFiles();
}

function jump(file: string, line: number, column: number): void {
  if (file === DATA) {
    jumpTo(data, line, column);
  } else if (names.includes(file)) {
    select(file);
    jumpTo(templates, line, column);
  }
}

function select(name: string): void {
  if (name !== open) {
    states.set(open, templates.state);
    open = name;
    templates.setState(states.get(name)!);
    underline(templates, problems.filter((problem) => problem.file === name));
    changed();
  }
  showFiles();
}

function showFiles(): void {
  const mark = (name: string) => {
    const own = problems.filter((problem) => problem.file === name);
    return own.find((problem) => problem.severity === "error")?.severity ?? own[0]?.severity;
  };
  const tabs = names.map((name) => ({ id: name, label: name, mark: mark(name) }));
  showTabs(element("files"), tabs, open, "template-editor", select);
  element("partial").hidden = open === PAGE;
  if (document.activeElement !== element("name")) {
    element<HTMLInputElement>("name").value = open;
  }
  element("usage").textContent = `{include ${open}}`;
}

function showViews(): void {
  const tabs = VIEWS.map((id) => ({ id, label: VIEW_LABELS[id] }));
  showTabs(element("views"), tabs, view, "view", (id) => {
    view = id as View;
    showViews();
    changed();
  });
  element("view").dataset.view = view;
}

function add(): void {
  let name = "part.tpl";
  for (let number = 2; names.includes(name); number++) {
    name = `part${number}.tpl`;
  }
  names.push(name);
  states.set(name, templateState(name, "", changed));
  select(name);
  element<HTMLInputElement>("name").select();
}

function rename(): void {
  const input = element<HTMLInputElement>("name");
  const name = input.value.trim();
  const isTaken = name !== open && (names.includes(name) || name === DATA);
  input.setCustomValidity(name === "" ? "A file needs a name." : isTaken ? "Another file has this name." : "");
  if (input.reportValidity() && name !== open) {
    const text = templates.state.doc.toString();
    names[names.indexOf(open)] = name;
    states.delete(open);
    states.set(name, templateState(name, text, changed));
    open = name;
    templates.setState(states.get(name)!);
    showFiles();
    changed();
  }
}

function remove(): void {
  const gone = open;
  select(names[names.indexOf(gone) - 1]);
  names = names.filter((name) => name !== gone);
  states.delete(gone);
  showFiles();
  changed();
  templates.focus();
}

async function share(): Promise<void> {
  const button = element("share");
  history.replaceState(null, "", await toFragment(current()));
  const isCopied = await navigator.clipboard.writeText(location.href).then(() => true, () => false);
  button.textContent = isCopied ? "Copied" : "The address is the link";
  setTimeout(() => (button.textContent = "Copy link"), 2000);
}

/** Shows which example this is; -1 for a page of one's own. */
function choose(number: number): void {
  element<HTMLSelectElement>("example").value = String(number);
  element<HTMLButtonElement>("previous").disabled = number <= 0;
  element<HTMLButtonElement>("next").disabled = number >= offered.length - 1;
}

function loadExample(number: number): void {
  const example = offered[number];
  choose(number);
  element("note").innerHTML = example.note;
  const files = Object.entries(example.files).map(([name, text]) => ({ name, text }));
  load({ files, data: example.data, open: PAGE, view: example.view });
}

/** The state that a link holds, or the first example. */
async function start(): Promise<void> {
  const shared = await fromFragment(location.hash);
  if (shared) {
    choose(-1);
    element("note").textContent = "";
    load(shared);
    return;
  }
  const isBroken = location.hash.length > 1;
  loadExample(0);
  if (isBroken) {
    element("note").textContent = "This link is broken, so here is the first example.";
  }
}

function duration(nanoseconds: number): string {
  return nanoseconds < 1e6 ? `${Math.max(1, Math.round(nanoseconds / 1e3))} µs` : `${(nanoseconds / 1e6).toFixed(1)} ms`;
}

function bytes(size: number): string {
  return size < 1e4 ? `${size} bytes` : `${Math.round(size / 1e3)} kB`;
}

async function main(): Promise<void> {
  const choice = element<HTMLSelectElement>("example");
  element("add").onclick = add;
  element("remove").onclick = remove;
  element("name").onchange = rename;
  element("share").onclick = share;
  choice.onchange = () => loadExample(Number(choice.value));
  element("previous").onclick = () => loadExample(Number(choice.value) - 1);
  element("next").onclick = () => loadExample(Number(choice.value) + 1);
  window.onhashchange = start;
  try {
    offered = await examples();
  } catch (error) {
    showFailure((error as Error).message);
    return;
  }
  const own = new Option("A page of your own", "-1");
  own.hidden = true;
  choice.replaceChildren(own, ...offered.map((example, number) => new Option(example.title, String(number))));
  await start();
}

main();
