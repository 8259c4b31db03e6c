// The structure of the templates, as nested lists.

import type { Reference, TreeNode } from "../../../wasm/web/engine";

type OnOpen = (file: string, line: number, column: number) => void;

export function showTree(target: HTMLElement, nodes: TreeNode[] | null, onOpen: OnOpen): void {
  const scroll = target.scrollTop;
  if (nodes?.length) {
    target.replaceChildren(list(nodes, onOpen));
  } else {
    target.textContent = nodes ? "There are no tags in this template." : "There is no tree for this template.";
  }
  target.scrollTop = scroll;
}

function list(nodes: TreeNode[], onOpen: OnOpen): HTMLElement {
  const result = document.createElement("ul");
  for (const node of nodes) {
    const item = document.createElement("li");
    item.append(...row(node, onOpen));
    if (node.children.length) {
      const children = list(node.children, onOpen);
      item.prepend(folder(children));
      item.append(children);
    }
    result.append(item);
  }
  return result;
}

function folder(children: HTMLElement): HTMLElement {
  const button = document.createElement("button");
  const show = () => {
    button.ariaExpanded = String(!children.hidden);
    button.ariaLabel = children.hidden ? "Show what is inside" : "Hide what is inside";
    button.textContent = children.hidden ? "▸" : "▾";
  };
  button.type = "button";
  button.className = "folder";
  button.onclick = () => {
    children.hidden = !children.hidden;
    show();
  };
  show();
  return button;
}

function row(node: TreeNode, onOpen: OnOpen): HTMLElement[] {
  const tag = document.createElement("button");
  tag.type = "button";
  tag.className = `tag ${node.kind.replace(/\W/g, "")}`;
  tag.textContent = node.tag;
  tag.title = `${node.file}, line ${node.line}, column ${node.column}`;
  tag.onclick = () => onOpen(node.file, node.line, node.column);
  const about = document.createElement("span");
  about.className = "about";
  about.textContent = meaning(node);
  const settled = document.createElement("span");
  settled.className = "settled";
  settled.textContent = [node.settled, node.note].filter(Boolean).join(", ");
  return [tag, about, settled];
}

function meaning(node: TreeNode): string {
  const parts: string[] = [];
  if (node.name) {
    parts.push(`loop “${node.name}”`);
  }
  if (node.kind !== "include") {
    parts.push(node.references.map(describe).join(", or "));
  }
  if (node.compared !== undefined) {
    parts.push(`compared with “${node.compared}”`);
  }
  if (node.fallback !== undefined) {
    parts.push(node.references.length ? `else “${node.fallback}”` : `the text “${node.fallback}”`);
  }
  return parts.filter(Boolean).join(", ");
}

function describe(reference: Reference): string {
  const loop = reference.namespace ? `“${reference.namespace}”` : "the innermost loop";
  const path = reference.indexes.join(" › ");
  switch (reference.type) {
    case "path":
      return path;
    case "key":
      return `key of ${loop}`;
    case "element":
      return path ? `${path} of an element of ${loop}` : `element of ${loop}`;
  }
}
