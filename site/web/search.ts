// The search over the manual: its index is made here, of the texts in sections.js.

import MiniSearch from "minisearch";

const MOST = 12;
const LENGTH = 140;

const sections = window.searchSections!;
const index = new MiniSearch<SearchSection & { id: number }>({
  fields: ["title", "text"],
  // Keywords and messages count as words, with their underlines.
  tokenize: (text) => text.split(/[^\p{L}\p{N}_]+/u).filter(Boolean),
  searchOptions: { boost: { title: 4 }, prefix: true, fuzzy: (term) => (term.length > 4 ? 0.2 : false), combineWith: "AND" },
});
index.addAll(sections.map((section, id) => ({ ...section, id })));

const dialog = document.createElement("dialog");
dialog.className = "search";
dialog.ariaLabel = "Search the manual";
const input = document.createElement("input");
input.type = "search";
input.placeholder = "Search the manual";
input.ariaLabel = "Search the manual";
input.autocomplete = "off";
const list = document.createElement("ul");
const told = document.createElement("p");
told.role = "status";
dialog.append(input, told, list);
document.body.append(dialog);

function show(): void {
  const text = input.value.trim();
  const found = text === "" ? [] : index.search(text);
  told.textContent = text === "" ? "" : found.length ? `${found.length} found` : "Nothing found.";
  list.replaceChildren(...found.slice(0, MOST).map(({ id, terms }) => {
    const section = sections[id as number];
    const link = document.createElement("a");
    link.href = section.url;
    const title = document.createElement("strong");
    title.textContent = section.title;
    const page = document.createElement("small");
    page.textContent = section.page;
    const excerpt = document.createElement("span");
    excerpt.append(...marked(around(section.text, terms), terms));
    link.append(title, " ", page, excerpt);
    link.onclick = () => dialog.close();
    const item = document.createElement("li");
    item.append(link);
    return item;
  }));
}

const pattern = (terms: string[]) =>
  new RegExp(`(${terms.map((term) => term.replace(/[^\p{L}\p{N}_]/gu, "\\$&")).join("|")})`, "giu");

/** The part of a text in which the first of the terms stands. */
function around(text: string, terms: string[]): string {
  const at = Math.max(0, text.search(pattern(terms)));
  const start = at < LENGTH / 2 ? 0 : text.indexOf(" ", at - LENGTH / 2) + 1;
  return (start ? "… " : "") + text.slice(start, start + LENGTH) + (text.length > start + LENGTH ? " …" : "");
}

const marked = (text: string, terms: string[]) => text.split(pattern(terms)).map((part, at) => {
  const node = document.createElement(at % 2 ? "mark" : "span");
  node.textContent = part;
  return node;
});

input.oninput = show;
dialog.onkeydown = (event) => {
  const links = [...list.querySelectorAll("a")];
  const at = links.indexOf(document.activeElement as HTMLAnchorElement);
  const step = { ArrowDown: 1, ArrowUp: -1 }[event.key];
  if (step) {
    event.preventDefault();
    (links[at + step] ?? input).focus();
  } else if (event.key === "Enter" && document.activeElement === input) {
    links[0]?.click();
  }
};
dialog.addEventListener("click", (event) => event.target === dialog && dialog.close());

window.openSearch = () => {
  dialog.open || dialog.showModal();
  input.select();
};
