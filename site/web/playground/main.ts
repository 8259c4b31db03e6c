// The playground: what is typed goes to the engine, and what it answers is shown.

import { EditorView } from "@codemirror/view";
import type { EditorState } from "@codemirror/state";
import type { Result } from "../../../wasm/web/engine";
import { dataState, fileState, jumpTo, sourceState, underline } from "../editor/editors";
import { showInFrame } from "../editor/frame";
import { nameFault } from "../editor/names";
import { type Problem, problemsOf, problemsOfRefusal, showProblems } from "../editor/problems";
import { duration, engine, Runner } from "../editor/runner";
import { DATA, fromFragment, PAGE, RUN, type State, toFragment, type View, VIEWS } from "../editor/state";
import { showTabs } from "../editor/tabs";
import { keep, kept } from "../storage";
import { forget, remember, showEarlier } from "./earlier";
import { download, opened } from "./files";
import { showTree } from "./tree";

interface Example {
  title: string;
  /** HTML, from the manual. */
  note: string;
  view: View;
  files: Record<string, string>;
  data: string;
}

const VIEW_LABELS: Record<View, string> = { page: "Page", source: "Source", tree: "Blocks" };
const NOTICE = 12_000;
const RESERVED = [DATA, ...RUN];

const element = <T extends HTMLElement = HTMLElement>(id: string) => document.getElementById(id) as T;

let names: string[] = [];
const states = new Map<string, EditorState>();
let open = PAGE;
let view: View = "page";
let offered: Example[] = [];
/** The state that was loaded last, to tell whether anything has been changed since. */
let original = "";
let problems: Problem[] = [];
/** Files or a link that couldn't be taken; told until something else happens. */
let refused: Problem[] = [];
let shownPage: string | null = null;
let link = 0;
let templates: EditorView;
let data: EditorView;
let source: EditorView;

const runner = new Runner(() => ({ ...current(), security: element<HTMLInputElement>("security").checked }), showResult, showRefusal);

const content = ({ files, data: json }: Pick<State, "files" | "data">) => JSON.stringify([files, json]);

function current(): State {
  states.set(open, templates.state);
  const files = names.map((name) => ({ name, text: states.get(name)!.doc.toString() }));
  return { files, data: data.state.doc.toString(), open, view };
}

function load(state: State): void {
  states.clear();
  names = state.files.map((file) => file.name);
  for (const file of state.files) {
    states.set(file.name, fileState(file.name, file.text, changed));
  }
  data.setState(dataState(state.data, changed));
  view = state.view;
  shownPage = null;
  open = state.open;
  templates.setState(states.get(open)!);
  problems = [];
  refused = [];
  original = content(state);
  showFiles();
  showViews();
  runner.run(0);
}

/** Puts another page in the place of this one, which isn't lost. */
function replace(how: () => void, what: string): void {
  const before = current();
  const choice = element<HTMLSelectElement>("example").value;
  const isEdited = content(before) !== original;
  isEdited && remember(before);
  how();
  if (isEdited) {
    notify(what, () => {
      choose(Number(choice));
      load(before);
      original = "";
    });
  }
}

function notify(text: string, undo: () => void): void {
  const notice = element("notice");
  notice.firstElementChild!.textContent = text;
  notice.hidden = false;
  const button = notice.querySelector("button")!;
  const timer = setTimeout(() => (notice.hidden = true), NOTICE);
  button.onclick = () => {
    clearTimeout(timer);
    notice.hidden = true;
    undo();
  };
}

function changed(): void {
  refused = [];
  runner.run();
  clearTimeout(link);
  link = window.setTimeout(async () => history.replaceState(null, "", await toFragment(current())), 400);
}

function showResult(result: Result): void {
  problems = problemsOf(result);
  markAll();
  showPage(result.page);
  showTree(element("tree"), result.tree, jump);
  const { nanoseconds, size, page } = result;
  element("time").textContent = page === null ? noPage() : `${duration(nanoseconds!)} · ${bytes(size!)}`;
}

/** The data is broken, or there is no engine: the last page stays, out of focus. */
function showRefusal(message: string): void {
  problems = problemsOfRefusal(message);
  markAll();
  showPage(null);
  element("time").textContent = noPage();
}

function refuse(message: string): void {
  refused = problemsOfRefusal(message);
  markAll();
}

function showPage(page: string | null): void {
  element("output").classList.toggle("stale", page === null);
  if (page !== null && page !== shownPage) {
    shownPage = page;
    showInFrame(element<HTMLIFrameElement>("page"), page);
    source.setState(sourceState(page));
  } else if (shownPage === null) {
    element<HTMLIFrameElement>("page").srcdoc = "";
    source.setState(sourceState(""));
  }
}

function noPage(): string {
  return shownPage === null ? "no page" : "no page; the last one is shown";
}

function markAll(): void {
  underline(templates, problems.filter((problem) => problem.file === open));
  underline(data, problems.filter((problem) => problem.file === DATA));
  showProblems(element("list"), element("count"), [...refused, ...problems], jump);
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
  element("partial").hidden = open === names[0];
  if (document.activeElement !== element("name")) {
    element<HTMLInputElement>("name").value = open;
    checkName();
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
  states.set(name, fileState(name, "", changed));
  select(name);
  element<HTMLInputElement>("name").select();
}

/** Says at each key what is wrong with the name; true when it can be used. */
function checkName(): boolean {
  const input = element<HTMLInputElement>("name");
  const fault = nameFault(input.value.trim(), [...names.filter((name) => name !== open), ...RESERVED]);
  input.ariaInvalid = String(fault !== "");
  element("name-fault").textContent = fault;
  return fault === "";
}

function rename(): void {
  const input = element<HTMLInputElement>("name");
  const name = input.value.trim();
  if (!checkName()) {
    input.value = open;
    setTimeout(checkName, 3000);
  } else if (name !== open) {
    const text = templates.state.doc.toString();
    names[names.indexOf(open)] = name;
    states.delete(open);
    states.set(name, fileState(name, text, changed));
    open = name;
    templates.setState(states.get(name)!);
    showFiles();
    changed();
  }
}

function remove(): void {
  const gone = open;
  remember(current());
  const before = current();
  select(names[names.indexOf(gone) - 1]);
  names = names.filter((name) => name !== gone);
  states.delete(gone);
  showFiles();
  changed();
  templates.focus();
  notify(`${gone} is deleted.`, () => {
    load(before);
    original = "";
  });
}

async function share(): Promise<void> {
  const button = element("share");
  history.replaceState(null, "", await toFragment(current()));
  const isCopied = await navigator.clipboard.writeText(location.href).then(() => true, () => false);
  button.textContent = isCopied ? "Copied" : "The address is the link";
  setTimeout(() => (button.textContent = "Copy link"), 2000);
}

async function upload(input: HTMLInputElement): Promise<void> {
  try {
    const state = await opened([...input.files!], data.state.doc.toString());
    replace(() => {
      choose(-1);
      element("note").textContent = "";
      load({ ...state, open: state.files[0].name, view });
    }, "Your page has been replaced by these files.");
    changed();
  } catch (error) {
    refuse((error as Error).message);
  }
  input.value = "";
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
  clearTimeout(link);
  location.hash && history.replaceState(null, "", location.pathname);
}

function switchTo(number: number): void {
  replace(() => loadExample(number), "Your page has been replaced by this example.");
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
    refuse("This link is broken, so here is the first example.");
  }
}

function openEarlier(): void {
  const dialog = element<HTMLDialogElement>("earlier");
  content(current()) === original || remember(current());
  showEarlier(dialog.querySelector("ul")!, (state) => {
    dialog.close();
    replace(() => {
      choose(-1);
      element("note").textContent = "";
      load(state);
    }, "Your page has been replaced by an earlier one.");
  });
  dialog.showModal();
}

function bytes(size: number): string {
  return size < 1e4 ? `${size} bytes` : `${Math.round(size / 1e3)} kB`;
}

export async function startPlayground(): Promise<void> {
  templates = new EditorView({ parent: element("template-editor") });
  data = new EditorView({ parent: element("data-editor") });
  source = new EditorView({ parent: element("source") });
  offered = JSON.parse(element("examples").textContent!);
  const choice = element<HTMLSelectElement>("example");
  const own = new Option("A page of your own", "-1");
  own.hidden = true;
  choice.replaceChildren(own, ...offered.map((example, number) => new Option(example.title, String(number))));
  let chosen = 0;
  choice.onfocus = () => { chosen = Number(choice.value); };
  choice.onchange = () => {
    const wanted = Number(choice.value);
    choose(chosen);
    switchTo(chosen = wanted);
  };
  element("previous").onclick = () => switchTo(Number(choice.value) - 1);
  element("next").onclick = () => switchTo(Number(choice.value) + 1);
  element("reset").onclick = () => replace(() => (Number(choice.value) < 0 ? loadExample(0) : loadExample(Number(choice.value))),
    "Your changes are gone.");
  element("history").onclick = openEarlier;
  element("forget").onclick = () => {
    forget();
    openEarlier();
  };
  element("earlier-close").onclick = () => element<HTMLDialogElement>("earlier").close();
  element("download").onclick = () => download(current());
  const input = element<HTMLInputElement>("upload-files");
  element("upload").onclick = () => input.click();
  input.onchange = () => upload(input);
  element("add").onclick = add;
  element("remove").onclick = remove;
  element("name").oninput = checkName;
  element("name").onchange = rename;
  element("share").onclick = share;
  const security = element<HTMLInputElement>("security");
  security.checked = kept("security") === "yes";
  security.onchange = () => {
    keep("security", security.checked ? "yes" : "");
    runner.run(0);
  };
  window.onhashchange = start;
  document.addEventListener("visibilitychange", () => {
    document.visibilityState === "hidden" && content(current()) !== original && remember(current());
  });
  await start();
  // Without an engine, the list of problems says why.
  const version = await engine.version().catch(() => null);
  if (version) {
    element("version").textContent = `This page runs template ${version.template} on PHP ${version.php}, in your browser.`;
  }
}
