// Serves the site to this machine only: node serve.mjs FOLDER PORT. Port 0 is any that is free.

import { readFileSync } from "node:fs";
import { createServer } from "node:http";
import { join } from "node:path";
import sirv from "sirv";

const [, , folder, port] = process.argv;
// One header a line, below the pages that it is for: all of them.
const headers = readFileSync(join(folder, "_headers"), "utf8").split("\n").slice(1).filter(Boolean)
  .map((line) => line.trim().split(/: (.*)/));

const server = createServer(sirv(folder, {
  dev: true, etag: true, brotli: true, gzip: true,
  setHeaders: (response) => headers.forEach(([name, value]) => response.setHeader(name, value)),
}));
server.on("error", ({ code }) => {
  console.error(`playground: port ${port} can't be used (${code}); take another one, or leave out --port`);
  process.exit(1);
});
server.listen(Number(port), "127.0.0.1", () =>
  console.log(`The playground is at http://127.0.0.1:${server.address().port}/playground.html (Ctrl-C ends it)`));
