// What the playground and an edited example show, and how a link holds it.

import { SCRIPT } from "../../../wasm/web/engine";

export type View = "page" | "source" | "tree";

export interface TemplateFile {
  name: string;
  text: string;
}

export interface State {
  /** The first one is what is run: the template page.tpl or the script script.php. */
  files: TemplateFile[];
  data: string;
  open: string;
  view: View;
}

/** An example of the manual: what is run with its data, and what the page says about the outcome. */
export interface ManualExample {
  kind: "template" | "row" | "script" | "signature";
  /** As the playground's; the first file is what is run. */
  state: { files: Record<string, string>; data: string } | null;
  /** Why it isn't live, if it isn't. */
  reason: string | null;
  text: string | null;
  warnings: string[];
}

export const PAGE = "page.tpl";
/** What may be the first file. */
export const RUN = [PAGE, SCRIPT];
/** The name under which problems speak of the data. */
export const DATA = "data.json";
export const VIEWS: View[] = ["page", "source", "tree"];

const MARK = "#1-";
const LARGEST = 1 << 20;

export async function toFragment(state: State): Promise<string> {
  const json = new Blob([JSON.stringify(state)]).stream();
  const packed = await new Response(json.pipeThrough(new CompressionStream("deflate-raw"))).arrayBuffer();
  let binary = "";
  for (const byte of new Uint8Array(packed)) {
    binary += String.fromCharCode(byte);
  }
  return MARK + btoa(binary).replaceAll("+", "-").replaceAll("/", "_").replaceAll("=", "");
}

/** Null when the fragment holds no state; links come from anywhere. */
export async function fromFragment(fragment: string): Promise<State | null> {
  if (!fragment.startsWith(MARK)) {
    return null;
  }
  try {
    const binary = atob(fragment.slice(MARK.length).replaceAll("-", "+").replaceAll("_", "/"));
    const packed = Uint8Array.from(binary, (character) => character.charCodeAt(0));
    return asState(JSON.parse(await unpack(packed)));
  } catch {
    return null;
  }
}

/** A short link can hold a text without end, so this reads only so far. */
async function unpack(packed: Uint8Array<ArrayBuffer>): Promise<string> {
  const reader = new Blob([packed]).stream().pipeThrough(new DecompressionStream("deflate-raw")).getReader();
  const decoder = new TextDecoder();
  let text = "";
  for (;;) {
    const { done, value } = await reader.read();
    if (done) {
      return text + decoder.decode();
    }
    text += decoder.decode(value, { stream: true });
    if (text.length > LARGEST) {
      await reader.cancel();
      throw new Error("too long");
    }
  }
}

export function asState(value: Partial<State> | null): State | null {
  const files = value?.files;
  const isFile = (file: TemplateFile, at: number) =>
    typeof file?.name === "string" && typeof file.text === "string" && RUN.includes(file.name) === (at === 0);
  if (!Array.isArray(files) || !files.length || !files.every(isFile) || typeof value?.data !== "string") {
    return null;
  }
  return {
    files: files.map(({ name, text }) => ({ name, text })),
    data: value.data,
    open: files.some((file) => file.name === value.open) ? value.open! : files[0].name,
    view: VIEWS.includes(value.view!) ? value.view! : "page",
  };
}
