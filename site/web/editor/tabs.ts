// Tabs by the usual pattern: one of them takes part in the order of the Tab key, the arrow keys go from one to the next.

export interface Tab {
  id: string;
  label: string;
  /** A mark behind the label: "error", "warning" or nothing. */
  mark?: string;
}

export function showTabs(list: HTMLElement, tabs: Tab[], selected: string, panel: string, onSelect: (id: string) => void) {
  const hadFocus = list.contains(document.activeElement);
  list.replaceChildren(...tabs.map((tab) => {
    const button = document.createElement("button");
    button.type = "button";
    button.role = "tab";
    button.textContent = tab.label;
    button.dataset.id = tab.id;
    button.dataset.mark = tab.mark ?? "";
    button.ariaSelected = String(tab.id === selected);
    button.tabIndex = tab.id === selected ? 0 : -1;
    button.setAttribute("aria-controls", panel);
    if (tab.mark) {
      button.title = tab.mark === "error" ? "There are errors in here" : "There are warnings in here";
    }
    button.onclick = () => onSelect(tab.id);
    return button;
  }));
  list.onkeydown = (event) => {
    const steps: Record<string, number> = { ArrowLeft: -1, ArrowRight: 1, Home: -tabs.length, End: tabs.length };
    const step = steps[event.key];
    if (step !== undefined) {
      event.preventDefault();
      const at = tabs.findIndex((tab) => tab.id === selected);
      const next = Math.abs(step) === 1 ? (at + step + tabs.length) % tabs.length : step < 0 ? 0 : tabs.length - 1;
      onSelect(tabs[next].id);
    }
  };
  const chosen = list.querySelector<HTMLElement>("[aria-selected=true]");
  if (chosen) {
    const [start, end] = [chosen.offsetLeft - list.offsetLeft, chosen.offsetLeft - list.offsetLeft + chosen.offsetWidth];
    list.scrollLeft = Math.max(end - list.clientWidth, Math.min(list.scrollLeft, start));
  }
  if (hadFocus) {
    chosen?.focus();
  }
}
