// The engine in a page: PHP with the extension and the checker, in a Worker.
//
//   const engine = Engine.inFolder("engine/");          // the folder that scripts/wasm has filled
//   const result = await engine.run({ files: { "page.tpl": "Hello {name}!" }, data: '{"name": "Ann"}' });
//   result.page                                         // "Hello Ann!"
//
// A page needs one. Its Content-Security-Policy must have 'wasm-unsafe-eval' in script-src; worker-src and connect-src
// must allow the folder. A page that is opened from disk, where nothing can be fetched, takes everything from a script
// and makes its Worker of a blob.

import { type Checked, Refused, type Rendered, type Request, type Result, type Version } from "./protocol";

export * from "./protocol";

/** How long a page, and the check of one, may take. */
export const SECONDS = 2;
/** How much memory each may need. */
export const MEGABYTES = 64;
/** The largest page that is handed out, in bytes. */
export const LARGEST_PAGE = 1 << 20;

/** The file that is run, if there is one. */
export const SCRIPT = "script.php";

type Job = "version" | "render" | "check";
type Reason = "time" | "memory" | "size" | "crash";
/** `fatal` is a fatal error's message, PHP's own. */
type Answer<Content> = Content & { error?: string; stopped?: Reason; fatal?: string };

/** What a Worker is made of. */
interface Parts {
  script: string;
  module: WebAssembly.Module;
}

/** What the script for pages from disk leaves behind: the Worker's text, and the module packed by gzip as base64. */
interface Embedded {
  worker: string;
  wasm: string;
}

export class Engine {
  private parts: Promise<Parts> | null = null;
  private worker: Promise<Worker> | null = null;
  private turn: Promise<unknown> = Promise.resolve();

  constructor(private readonly load: () => Promise<Parts>) {}

  /** Nothing is loaded before the first call. */
  static inFolder(folder: string): Engine {
    const base = new URL(folder, document.baseURI);
    return new Engine(() => (base.protocol === "file:" ? fromScript(base) : fromServer(base)));
  }

  /** Loads the engine, so that the first call finds it ready. */
  async version(): Promise<Version> {
    return this.inTurn(() => this.ask<Version>("version", null));
  }

  /**
   * Renders and checks a page. Calls run one after the other. One that is no longer wanted when its turn comes rejects
   * with the signal's reason; a request that can't be served rejects with `Refused`.
   */
  async run(request: Request, signal?: AbortSignal): Promise<Result> {
    return this.inTurn(async () => {
      signal?.throwIfAborted();
      const { stopped, fatal: broken, findings: said = [], ...rendered } = await this.ask<Partial<Rendered & Checked>>("render", request);
      // A script may leave anything behind.
      SCRIPT in request.files && this.renew();
      signal?.throwIfAborted();
      const { stopped: unchecked, fatal, findings = [], ...checked } = await this.ask<Partial<Checked>>("check", request);
      const none = { page: null, size: null, nanoseconds: null, messages: broken ? [broken] : [] };
      return {
        ...none, ...rendered, stopped: sentence("The page", stopped), findings: [...said, ...findings],
        more: 0, tree: null, ...checked, unchecked: sentence("The check", unchecked) ?? fatal ?? null,
      };
    });
  }

  /** Ends the Worker; the next call starts another. */
  stop(): void {
    this.worker?.then((worker) => worker.terminate()).catch(() => {});
    this.worker = null;
  }

  /** Nothing that was in the Worker is of any use now. The next one starts at once, so that nobody has to wait for it. */
  private renew(): void {
    this.stop();
    this.worker = this.start();
    this.worker.catch(() => {});
  }

  private inTurn<Content>(call: () => Promise<Content>): Promise<Content> {
    const result = this.turn.then(call);
    this.turn = result.catch(() => {});
    return result;
  }

  private async ask<Content>(job: Job, request: Request | null): Promise<Answer<Content>> {
    const worker = await (this.worker ??= this.start());
    const text = await answerOf(worker, JSON.stringify({ job, ...request }), SECONDS * 1000);
    if (text === "time" || text === "crash") {
      this.renew();
      return { stopped: text } as Answer<Content>;
    }
    const answer = JSON.parse(text) as Answer<Content>;
    if (answer.error) {
      throw new Refused(answer.error);
    }
    return answer;
  }

  private async start(): Promise<Worker> {
    try {
      const { script, module } = await (this.parts ??= this.load());
      const worker = new Worker(script);
      worker.postMessage(module);
      if ((await answerOf(worker, null, 60_000)) !== "ready") {
        worker.terminate();
        throw new Refused("The engine doesn’t start in this browser.");
      }
      return worker;
    } catch (error) {
      // The next call tries again.
      this.parts = this.worker = null;
      throw error instanceof Refused ? error : new Refused(`The engine can’t be loaded: ${(error as Error).message}`);
    }
  }
}

/** The Worker's answer to a message; "time" and "crash" when there is none. */
function answerOf(worker: Worker, message: string | null, milliseconds: number): Promise<string> {
  return new Promise((resolve) => {
    const timer = setTimeout(() => end("time"), milliseconds);
    const end = (text: string) => {
      clearTimeout(timer);
      worker.onmessage = worker.onerror = null;
      resolve(text);
    };
    worker.onmessage = (event: MessageEvent<string>) => end(event.data);
    worker.onerror = (event) => {
      event.preventDefault();
      end("crash");
    };
    if (message !== null) {
      worker.postMessage(message);
    }
  });
}

async function fromServer(base: URL): Promise<Parts> {
  const response = await fetch(new URL("engine.wasm", base));
  if (!response.ok) {
    throw new Refused(`The engine can’t be loaded: the server answered with status ${response.status}.`);
  }
  // Compiled while it arrives, and kept by the browser for the next visit; for that the server has to name the type.
  const module = response.headers.get("Content-Type") === "application/wasm"
    ? await WebAssembly.compileStreaming(response)
    : await WebAssembly.compile(await response.arrayBuffer());
  return { script: new URL("engine-worker.js", base).href, module };
}

async function fromScript(base: URL): Promise<Parts> {
  await new Promise<void>((resolve, reject) => {
    const script = document.createElement("script");
    script.src = new URL("engine-embedded.js", base).href;
    script.onload = () => resolve();
    script.onerror = () => reject(new Error("there is no engine-embedded.js"));
    document.head.append(script);
  });
  const { worker, wasm } = (globalThis as unknown as { templateEngine: Embedded }).templateEngine;
  const packed = Uint8Array.from(atob(wasm), (character) => character.charCodeAt(0));
  const unpacked = new Blob([packed]).stream().pipeThrough(new DecompressionStream("gzip"));
  const module = await WebAssembly.compile(await new Response(unpacked).arrayBuffer());
  return { script: URL.createObjectURL(new Blob([worker], { type: "text/javascript" })), module };
}

function sentence(what: string, reason: Reason | undefined): string | null {
  const sentences: Record<Reason, string> = {
    time: ` took more than ${SECONDS} seconds, so it was stopped.`,
    memory: ` needed more than ${MEGABYTES} MB of memory, so it was stopped.`,
    size: ` is larger than ${LARGEST_PAGE >> 20} MB, so it isn't shown.`,
    crash: " could not be finished: the engine ended early and was started anew.",
  };
  return reason ? what + sentences[reason] : null;
}
