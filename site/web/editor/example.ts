// An example of the manual that is edited: its files, its data and what comes out, in the place of the example.

import { EditorView } from "@codemirror/view";
import type { EditorState } from "@codemirror/state";
import { dataState, fileState, jumpTo, sourceState, underline } from "./editors";
import { isHtml, showInFrame } from "./frame";
import { type Problem, problemsOf, problemsOfRefusal, showProblems } from "./problems";
import { duration, Runner } from "./runner";
import { DATA, type ManualExample, PAGE, type State, toFragment } from "./state";
import { showTabs } from "./tabs";

const LABELS: Record<string, string> = { [DATA]: "Data", [PAGE]: "Template" };
let count = 0;

function part<Name extends keyof HTMLElementTagNameMap>(name: Name, parent: HTMLElement, of: Partial<HTMLElementTagNameMap[Name]> = {}) {
  const element = Object.assign(document.createElement(name), of);
  parent.append(element);
  return element;
}

/** Opens the example behind its place: a figure, which is hidden meanwhile, or a table. Only one stands there at a time. */
export async function editExample(example: ManualExample, place: HTMLElement, button: HTMLElement): Promise<void> {
  const before = place.nextElementSibling;
  before?.classList.contains("live") && before.dispatchEvent(new Event("leave"));
  new LiveExample(example.state!, place, button);
}

class LiveExample {
  private readonly id = `live-${++count}`;
  private readonly box = document.createElement("section");
  private readonly states = new Map<string, EditorState>();
  private readonly view: EditorView;
  private readonly output: EditorView;
  private readonly runner: Runner;
  private readonly tabs: HTMLElement;
  private readonly panel: HTMLElement;
  private readonly views: HTMLElement;
  private readonly source: HTMLElement;
  private readonly frame: HTMLIFrameElement;
  private readonly time: HTMLElement;
  private readonly list: HTMLElement;
  private readonly count: HTMLElement;
  /** The file that is run. */
  private readonly first: string;
  private open: string;
  private problems: Problem[] = [];
  private page = "";
  private isFramed = false;

  constructor(private readonly original: NonNullable<ManualExample["state"]>, private readonly place: HTMLElement, button: HTMLElement) {
    this.open = this.first = Object.keys(original.files)[0];
    this.box.className = "live";
    this.box.ariaLabel = "Example";
    const bar = part("div", this.box, { className: "bar" });
    this.tabs = part("div", bar, { role: "tablist", ariaLabel: "Files" });
    const panes = part("div", this.box, { className: "panes" });
    this.panel = part("div", panes, { className: "editor", role: "tabpanel", id: this.id });
    const result = part("div", panes, { className: "outcome" });
    const head = part("div", result, { className: "bar" });
    this.views = part("div", head, { role: "tablist", ariaLabel: "Result" });
    this.time = part("output", head, { textContent: "loading the engine …" });
    const shown = part("div", result, { className: "shown", role: "tabpanel", id: `${this.id}-result`, ariaLabel: "Result" });
    this.source = part("div", shown, { className: "editor" });
    this.output = new EditorView({ parent: this.source, state: sourceState("") });
    this.frame = part("iframe", shown, { title: "The rendered page", hidden: true });
    this.frame.setAttribute("sandbox", "");
    this.list = part("ul", this.box, { className: "problems" });
    this.count = part("span", this.box, { className: "hidden", ariaLive: "polite" });
    const foot = part("div", this.box, { className: "actions" });
    part("button", foot, { type: "button", textContent: "Done", className: "strong", onclick: () => this.leave(button) });
    part("button", foot, { type: "button", textContent: "Reset", onclick: () => this.reset() });
    const link = part("a", foot, { href: "playground.html", textContent: "Open in the playground" });
    link.onclick = async (event) => {
      event.preventDefault();
      location.href = "playground.html" + await toFragment({ ...this.current(), open: this.first, view: "source" });
    };

    this.view = new EditorView({ parent: this.panel });
    this.runner = new Runner(
      () => this.current(),
      (result) => this.show(result.page, problemsOf(result), result.nanoseconds),
      (message) => this.show(null, problemsOfRefusal(message), null),
    );
    this.box.addEventListener("leave", () => this.leave(null));
    place.hidden = place.localName === "figure";
    place.after(this.box);
    this.reset();
    this.view.focus();
  }

  private reset(): void {
    const changed = () => this.runner.run();
    for (const [name, text] of Object.entries(this.original.files)) {
      this.states.set(name, fileState(name, text, changed));
    }
    // Most scripts bring their own.
    const hasData = this.first === PAGE || this.original.data !== "{}";
    hasData && this.states.set(DATA, dataState(this.original.data, changed));
    this.view.setState(this.states.get(this.open)!);
    this.runner.run(0);
    this.showTabs();
  }

  private current(): Pick<State, "files" | "data"> {
    this.states.set(this.open, this.view.state);
    const text = (name: string) => this.states.get(name)?.doc.toString();
    const files = Object.keys(this.original.files).map((name) => ({ name, text: text(name)! }));
    return { files, data: text(DATA) ?? this.original.data };
  }

  private select(name: string): void {
    this.states.set(this.open, this.view.state);
    this.open = name;
    this.view.setState(this.states.get(name)!);
    this.mark();
  }

  private show(page: string | null, problems: Problem[], nanoseconds: number | null): void {
    this.problems = problems;
    this.box.classList.toggle("stale", page === null);
    this.time.textContent = page === null ? "no page" : duration(nanoseconds!);
    page === null || this.showPage(page);
    showProblems(this.list, this.count, problems, (file, line, column) => {
      this.states.has(file) && this.select(file);
      jumpTo(this.view, line, column);
    });
    this.mark();
  }

  /** As text and, where it is HTML, as a browser shows it. */
  private showPage(page: string): void {
    this.page = page;
    const isFramed = this.isFramed && isHtml(page);
    const tabs = [{ id: "text", label: "Result" }, ...isHtml(page) ? [{ id: "page", label: "Page" }] : []];
    showTabs(this.views, tabs, isFramed ? "page" : "text", `${this.id}-result`, (id) => {
      this.isFramed = id === "page";
      this.showPage(this.page);
    });
    this.source.hidden = isFramed;
    this.frame.hidden = !isFramed;
    this.output.setState(sourceState(page));
    isFramed && showInFrame(this.frame, page);
  }

  private mark(): void {
    underline(this.view, this.problems.filter((problem) => problem.file === this.open));
    this.showTabs();
  }

  private showTabs(): void {
    const tabs = [...this.states.keys()].map((name) => ({
      id: name,
      label: LABELS[name] ?? name,
      mark: this.problems.find((problem) => problem.file === name)?.severity,
    }));
    showTabs(this.tabs, tabs, this.open, this.id, (name) => this.select(name));
    this.panel.ariaLabel = this.open;
  }

  private leave(button: HTMLElement | null): void {
    this.runner.stop();
    this.view.destroy();
    this.output.destroy();
    this.box.remove();
    this.place.hidden = false;
    button?.focus();
  }
}
