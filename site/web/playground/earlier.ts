// Earlier work, kept in this browser: what was edited and then replaced or left.

import { keep, kept } from "../storage";
import { asState, type State } from "../editor/state";

const NAME = "earlier";
const MOST = 20;
const LARGEST = 1 << 20;

export interface Earlier {
  /** Milliseconds since 1970. */
  time: number;
  state: State;
}

/** The newest first. */
export function earlier(): Earlier[] {
  try {
    const all = JSON.parse(kept(NAME) ?? "[]") as Earlier[];
    return all.filter(({ time, state }) => typeof time === "number" && asState(state));
  } catch {
    return [];
  }
}

export function remember(state: State): void {
  const content = ({ files, data }: State) => JSON.stringify([files, data]);
  const others = earlier().filter((each) => content(each.state) !== content(state));
  let all = [{ time: Date.now(), state }, ...others].slice(0, MOST);
  while (JSON.stringify(all).length > LARGEST) {
    all = all.slice(0, -1);
  }
  keep(NAME, JSON.stringify(all));
}

export function forget(): void {
  keep(NAME, "[]");
}

export function showEarlier(list: HTMLElement, onRestore: (state: State) => void): void {
  const all = earlier();
  list.replaceChildren(...all.map(({ time, state }) => {
    const button = document.createElement("button");
    button.type = "button";
    const when = document.createElement("small");
    when.textContent = new Date(time).toLocaleString();
    const code = document.createElement("code");
    code.textContent = state.files[0].text.trim().slice(0, 70) || "(empty)";
    const more = document.createElement("small");
    more.textContent = state.files.length > 1 ? `and ${state.files.slice(1).map(({ name }) => name).join(", ")}` : "";
    button.append(when, code, more);
    button.onclick = () => onRestore(state);
    const item = document.createElement("li");
    item.append(button);
    return item;
  }));
  if (!all.length) {
    const item = document.createElement("li");
    item.textContent = "Nothing yet. What you change is kept here when you choose another example or leave.";
    list.append(item);
  }
}
