// The requests to the server, and what it answers.

import type { TemplateFile, View } from "./state";

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

export interface Result {
  page: string | null;
  size: number | null;
  nanoseconds: number | null;
  messages: string[];
  /** Why there is no page although no template is wrong. */
  stopped: string | null;
  findings: Finding[];
  more: number;
  unreadable: string[];
  tree: TreeNode[] | null;
  unchecked: string | null;
}

export interface Example {
  title: string;
  /** HTML, from the manual. */
  note: string;
  view: View;
  files: Record<string, string>;
  data: string;
}

/** A sentence for the reader. */
export class Refused extends Error {}

export async function render(files: TemplateFile[], data: string, signal: AbortSignal): Promise<Result> {
  const body = JSON.stringify({ files: Object.fromEntries(files.map(({ name, text }) => [name, text])), data });
  const answer = await ask("/api/render", {
    method: "POST",
    headers: { "Content-Type": "application/json" },
    body,
    signal,
  });
  return answer as Result;
}

export async function examples(): Promise<Example[]> {
  return (await ask("/examples.json")) as Example[];
}

async function ask(path: string, init?: RequestInit): Promise<unknown> {
  let response: Response;
  try {
    response = await fetch(path, init);
  } catch (error) {
    if (init?.signal?.aborted) {
      throw error;
    }
    throw new Refused("The server doesn’t answer. Start it again: scripts/playground");
  }
  const answer = await response.json().catch(() => null);
  if (!response.ok || answer === null) {
    throw new Refused(answer?.error ?? `The server answered with status ${response.status}.`);
  }
  return answer;
}
