// Hands what is typed to the engine, and its answer back, unless something newer has been typed meanwhile.

import { Engine, Refused, type Result } from "../../../wasm/web/engine";
import type { State } from "./state";

const PAUSE = 150;
const ENGINE = "engine/";

/** One for a page: it is large, and calls run one after the other. */
export const engine = Engine.inFolder(ENGINE);

export class Runner {
  private timer = 0;
  private request: AbortController | null = null;

  constructor(
    private readonly current: () => Pick<State, "files" | "data"> & { security?: boolean },
    private readonly onResult: (result: Result) => void,
    private readonly onRefusal: (message: string) => void,
  ) {}

  /** To be called after each change. */
  run(pause = PAUSE): void {
    clearTimeout(this.timer);
    this.timer = window.setTimeout(() => this.ask(), pause);
  }

  stop(): void {
    clearTimeout(this.timer);
    this.request?.abort();
  }

  private async ask(): Promise<void> {
    this.request?.abort();
    this.request = new AbortController();
    const { signal } = this.request;
    const { files, data, security } = this.current();
    const texts = Object.fromEntries(files.map(({ name, text }) => [name, text]));
    try {
      const result = await engine.run({ files: texts, data, security }, signal);
      signal.aborted || this.onResult(result);
    } catch (error) {
      signal.aborted || this.onRefusal(error instanceof Refused ? error.message : String(error));
    }
    keepForLater();
  }
}

export function duration(nanoseconds: number): string {
  return nanoseconds < 1e6 ? `${Math.max(1, Math.round(nanoseconds / 1e3))} µs` : `${(nanoseconds / 1e6).toFixed(1)} ms`;
}

let isKept = false;

/** What the page has loaded is there without a network, too. */
async function keepForLater(): Promise<void> {
  if (!isKept && location.protocol !== "file:" && "serviceWorker" in navigator) {
    isKept = true;
    const { active } = await navigator.serviceWorker.ready;
    active?.postMessage(["engine.wasm", "engine-worker.js"].map((name) => new URL(ENGINE + name, document.baseURI).href));
  }
}
