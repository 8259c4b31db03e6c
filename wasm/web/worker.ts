// The Worker in which the engine lives. The first message is the compiled module, answered with "ready"; each other one
// is a request as JSON, answered with JSON, or with "crash", after which there is nothing left but to end the Worker.

import image from "./image.json";
import createPhp from "./module.js";
import { Php } from "./php";
import { MEGABYTES } from "./engine";

const SETTINGS = `memory_limit=${MEGABYTES}M\ndisplay_errors=0\ninclude_path=.\n`;

let php: Php;

// PHP's sockets would be made of these; a reader's script has no network.
for (const name of ["WebSocket", "XMLHttpRequest", "fetch", "importScripts"]) {
  Object.defineProperty(globalThis, name, { value: undefined });
}

onmessage = async ({ data }: MessageEvent<WebAssembly.Module | string>) => {
  if (typeof data !== "string") {
    php = await Php.start(createPhp, data, SETTINGS);
    php.lock("memory_limit");
    php.write(image);
    postMessage("ready");
    return;
  }
  let answer = "crash";
  try {
    php.write({ "/request.json": data });
    php.run("/request.php");
    answer = php.output();
  } catch {
    // The browser's stack has come to its end, or its memory has: the module stands in the middle of something.
  }
  // Where PHP could end a request in no better way, there is no JSON.
  postMessage(answer.startsWith("{") ? answer : "crash");
};
