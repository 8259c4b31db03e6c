// What goes between a page and the engine. Lines and columns count from 1, columns in characters.

/**
 * One page: `files` by name, of which `page.tpl` is rendered, and its data as the text of a JSON object. Where there is a
 * `script.php`, that is run instead, with the data in `$data`, and what it prints is the page.
 */
export interface Request {
  files: Record<string, string>;
  data: string;
  /** Whether the checker looks for values that can break out of their place. */
  security?: boolean;
}

export interface Finding {
  file: string;
  line: number;
  column: number;
  endLine: number;
  endColumn: number;
  severity: "error" | "warning";
  name: string | null;
  message: string;
  notes: string[];
  includedFrom: { file: string; line: number; column: number }[];
}

export interface Reference {
  text: string;
  type: "path" | "element" | "key";
  namespace: string;
  indexes: string[];
}

export interface TreeNode {
  tag: string;
  kind: string;
  file: string;
  line: number;
  column: number;
  name?: string;
  references: Reference[];
  fallback?: string;
  compared?: string;
  included?: string;
  note?: string;
  settled?: string;
  children: TreeNode[];
}

/** What became of the page. */
export interface Rendered {
  page: string | null;
  /** In bytes. */
  size: number | null;
  nanoseconds: number | null;
  /** What the engine and PHP warn of. */
  messages: string[];
  /** Why there is no page although no template is wrong. */
  stopped: string | null;
}

/** What the checker says. */
export interface Checked {
  findings: Finding[];
  /** How many findings there are besides. */
  more: number;
  tree: TreeNode[] | null;
  /** Why there was no check. */
  unchecked: string | null;
}

export type Result = Rendered & Checked;

export interface Version {
  /** The extension's. */
  template: string;
  php: string;
}

/** A request that isn't served: a sentence for the reader. One about the data begins with "data.json:LINE:COLUMN: ". */
export class Refused extends Error {}
