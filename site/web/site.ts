// What every page has: the look, the search, examples that can be edited, and use without a network.

import type { ManualExample } from "./editor/state";
import { toFragment } from "./editor/state";
import { keep, kept } from "./storage";

const element = <T extends HTMLElement = HTMLElement>(id: string) => document.getElementById(id) as T | null;

const loaded = new Map<string, Promise<void>>();

/** Loads a script once. Not a module: those can't be loaded from disk. */
function script(path: string): Promise<void> {
  const promise = loaded.get(path) ?? new Promise<void>((resolve, reject) => {
    const tag = document.createElement("script");
    tag.src = path;
    tag.onload = () => resolve();
    tag.onerror = () => {
      loaded.delete(path);
      reject(new Error(`${path} can’t be loaded`));
    };
    document.head.append(tag);
  });
  loaded.set(path, promise);
  return promise;
}

function startTheme(button: HTMLElement): void {
  const root = document.documentElement;
  const isDark = () => root.dataset.theme === "dark"
    || root.dataset.theme !== "light" && matchMedia("(prefers-color-scheme: dark)").matches;
  const show = () => {
    button.textContent = isDark() ? "☀" : "☾";
    button.ariaLabel = button.title = isDark() ? "Light colours" : "Dark colours";
  };
  button.hidden = false;
  button.onclick = () => {
    root.dataset.theme = isDark() ? "light" : "dark";
    keep("theme", root.dataset.theme);
    show();
  };
  matchMedia("(prefers-color-scheme: dark)").addEventListener("change", show);
  root.dataset.theme = kept("theme") ?? "";
  show();
}

function startSearch(button: HTMLElement): void {
  const open = async () => {
    await script("assets/sections.js");
    await script("assets/search.js");
    window.openSearch!();
  };
  button.hidden = false;
  button.onclick = open;
  document.addEventListener("keydown", (event) => {
    const isTyping = (event.target as HTMLElement).closest("input, textarea, select, [contenteditable]");
    if (event.key === "/" && !isTyping && !event.ctrlKey && !event.metaKey && !event.altKey) {
      event.preventDefault();
      open();
    }
  });
}

/** Each example gets its buttons. A row of a table opens below its table. */
function startExamples(): void {
  const all: ManualExample[] = JSON.parse(element("examples")?.textContent ?? "[]");
  for (const place of document.querySelectorAll<HTMLElement>("[data-example]")) {
    const example = all[Number(place.dataset.example)];
    if (!example?.state) {
      example?.reason && place.append(quiet(`Not live: ${example.reason}`));
      continue;
    }
    const isRow = place.localName === "tr";
    const edit = document.createElement("button");
    edit.type = "button";
    edit.className = "edit";
    edit.textContent = "Edit";
    if (isRow) {
      edit.ariaLabel = `Edit ${place.querySelector("code")?.textContent ?? "this example"}`;
    }
    edit.onclick = async () => {
      edit.disabled = true;
      try {
        await Promise.all([script("assets/app.js"), style("assets/app.css")]);
        await window.editExample!(example, isRow ? place.closest<HTMLElement>(".table")! : place, edit);
      } finally {
        edit.disabled = false;
      }
    };
    if (isRow) {
      place.lastElementChild!.append(edit);
      continue;
    }
    const actions = document.createElement("div");
    actions.className = "actions";
    actions.append(edit, playgroundLink(example));
    place.append(actions);
  }
}

function quiet(text: string): HTMLElement {
  return Object.assign(document.createElement("p"), { className: "why", textContent: text });
}

function playgroundLink(example: ManualExample): HTMLElement {
  const link = document.createElement("a");
  link.href = "playground.html";
  link.textContent = "Open in the playground";
  link.onclick = async (event) => {
    event.preventDefault();
    const files = Object.entries(example.state!.files).map(([name, text]) => ({ name, text }));
    location.href = "playground.html" + await toFragment({ files, data: example.state!.data, open: files[0].name, view: "source" });
  };
  return link;
}

function style(path: string): Promise<void> {
  if (document.querySelector(`link[href="${path}"]`)) {
    return Promise.resolve();
  }
  return new Promise((resolve) => {
    const link = document.createElement("link");
    link.rel = "stylesheet";
    link.href = path;
    link.onload = link.onerror = () => resolve();
    document.head.append(link);
  });
}

/** The menu is open where it stands beside the text, closed where it would stand above it. */
function startMenu(menu: HTMLDetailsElement): void {
  const wide = matchMedia("(min-width: 60rem)");
  const fit = () => { menu.open = wide.matches; };
  wide.addEventListener("change", fit);
  fit();
}

startTheme(element("theme")!);
startSearch(element("search")!);
document.body.classList.contains("playground") || startExamples();
const menu = document.querySelector<HTMLDetailsElement>(".menu");
menu && startMenu(menu);
if (location.protocol !== "file:") {
  navigator.serviceWorker?.register("sw.js").catch(() => {});
}
