// PHP as WebAssembly: scripts run one after the other, each as a request of its own, on a file system in memory.

/** What emscripten's glue has to offer. */
export interface Glue {
  HEAPU8: Uint8Array;
  FS: {
    mkdirTree(path: string): void;
    writeFile(path: string, content: string | Uint8Array): void;
    readFile(path: string): Uint8Array;
    readdir(path: string): string[];
  };
  ccall(name: string, result: "number" | null, types: string[], values: unknown[]): number;
}

type Imports = WebAssembly.Imports;

export type CreateGlue = (options: {
  instantiateWasm(imports: Imports, done: (instance: WebAssembly.Instance) => void): object;
  onAbort?(): void;
}) => Promise<Glue>;

export class Php {
  private constructor(private readonly glue: Glue) {}

  /** Settings: lines as in php.ini. */
  static async start(createGlue: CreateGlue, module: WebAssembly.Module, settings: string): Promise<Php> {
    const glue = await createGlue({
      instantiateWasm(imports, done) {
        WebAssembly.instantiate(module, imports).then(done);
        return {};
      },
    });
    if (!glue.ccall("start", "number", ["string"], [settings])) {
      throw new Error("PHP doesn't start");
    }
    return new Php(glue);
  }

  write(files: Record<string, string | Uint8Array>): void {
    for (const [path, content] of Object.entries(files)) {
      this.glue.FS.mkdirTree(path.slice(0, path.lastIndexOf("/")) || "/");
      this.glue.FS.writeFile(path, content);
    }
  }

  read(path: string): Uint8Array {
    return this.glue.FS.readFile(path);
  }

  names(folder: string): string[] {
    return this.glue.FS.readdir(folder);
  }

  /** From now on no script can change the setting. */
  lock(setting: string): void {
    this.glue.ccall("lock_setting", null, ["string"], [setting]);
  }

  /** The exit status: 255 after a fatal error. */
  run(path: string): number {
    return this.glue.ccall("run", "number", ["string"], [path]);
  }

  /** What the last script has printed. */
  bytes(): Uint8Array {
    const start = this.glue.ccall("output_text", "number", [], []);
    return this.glue.HEAPU8.slice(start, start + this.glue.ccall("output_length", "number", [], []));
  }

  output(): string {
    return new TextDecoder().decode(this.bytes());
  }
}
