// The WebAssembly build in Node.

import { readFileSync } from "node:fs";
import { createRequire } from "node:module";
import { join } from "node:path";
import { pathToFileURL } from "node:url";

/** What starts PHP with the given settings: the build's module.js, module.wasm and php.mjs lie in the folder. */
export async function load(folder) {
  const { Php } = await import(pathToFileURL(join(folder, "php.mjs")));
  const createGlue = createRequire(import.meta.url)(join(folder, "module.js"));
  const module = await WebAssembly.compile(readFileSync(join(folder, "module.wasm")));

  const createFreer = async (options) => {
    const glue = await createGlue(options);
    // Elsewhere the current folder can be removed.
    const { rmdir } = glue.FS;
    glue.FS.rmdir = (path) => {
      glue.FS.cwd() === path && glue.FS.chdir("/");
      rmdir(path);
    };
    return glue;
  };
  return (settings) => Php.start(createFreer, module, settings);
}
