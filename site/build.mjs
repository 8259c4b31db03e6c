// Makes the site: node build.mjs, in the folder site/ of one with the same layout as the source tree and node_modules.
//   ROOT      that one               OUTPUT   the folder that is made
//   EXAMPLES  what manual/examples.php has printed        ENGINE   the folder with the engine        VERSION  its version
//   PACKED    if it is set, each file lies there packed by gzip and brotli, too, for servers that send such files

import { createHash } from "node:crypto";
import { cpSync, mkdirSync, readdirSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { join, relative } from "node:path";
import { pathToFileURL } from "node:url";
import { brotliCompressSync, gzipSync } from "node:zlib";
import Eleventy from "@11ty/eleventy";
import esbuild from "esbuild";
import { HEADERS } from "./headers.mjs";
import { FILES } from "./manual/pages.mjs";

const { ROOT, OUTPUT, EXAMPLES, ENGINE, VERSION, PACKED } = process.env;
rmSync(OUTPUT, { recursive: true, force: true });
mkdirSync(join(OUTPUT, "assets"), { recursive: true });

const common = { bundle: true, minify: true, target: "es2022", logLevel: "warning" };
const highlighter = join(ROOT, "node_modules/.highlight.mjs");
await esbuild.build({ ...common, minify: false, entryPoints: ["./manual/highlight.ts"], format: "esm", platform: "node",
  packages: "external", outfile: highlighter });
// Plain scripts: a page that is opened from disk can't load modules.
await esbuild.build({ ...common, entryPoints: ["web/theme.ts", "web/site.ts", "web/search.ts", "web/app.ts", "style/site.css",
  "style/app.css"], format: "iife", entryNames: "[name]",
  outdir: join(OUTPUT, "assets"), external: ["*.svg"] });

const { highlight } = await import(pathToFileURL(highlighter));
globalThis.site = { examples: JSON.parse(readFileSync(EXAMPLES, "utf8")), highlight, version: VERSION, found: [] };
const eleventy = new Eleventy("pages", OUTPUT, { configPath: "eleventy.config.mjs", quietMode: true });
await eleventy.write();
cpSync("assets", join(OUTPUT, "assets"), { recursive: true });
FILES.forEach(({ source: file, url }) => cpSync(join(ROOT, file), join(OUTPUT, url)));

cpSync(ENGINE, join(OUTPUT, "engine"), { recursive: true, filter: (name) => !/\.(br|gz)$/.test(name) });
writeFileSync(join(OUTPUT, "_headers"), `/*\n${HEADERS.map((header) => `  ${header}\n`).join("")}`);

checkLinks();
writeFileSync(join(OUTPUT, "assets/sections.js"), `searchSections = ${JSON.stringify(globalThis.site.found)};\n`);
const files = filesIn(OUTPUT);
const shell = files.filter((name) => !name.startsWith("engine/") && name !== "_headers");
const hash = createHash("sha256");
files.sort().forEach((name) => hash.update(name).update(readFileSync(join(OUTPUT, name))));
await esbuild.build({ ...common, entryPoints: ["web/sw.ts"], format: "iife", outfile: join(OUTPUT, "sw.js"),
  define: { SHELL: JSON.stringify(shell), BUILD: JSON.stringify(hash.digest("hex").slice(0, 12)) } });
if (PACKED) {
  for (const name of filesIn(OUTPUT).filter((each) => /\.(html|js|css|svg|wasm)$/.test(each) && !each.includes("embedded"))) {
    const text = readFileSync(join(OUTPUT, name));
    writeFileSync(join(OUTPUT, `${name}.gz`), gzipSync(text, { level: 9 }));
    writeFileSync(join(OUTPUT, `${name}.br`), brotliCompressSync(text));
  }
}

function filesIn(folder) {
  return readdirSync(folder, { recursive: true, withFileTypes: true }).filter((entry) => entry.isFile())
    .map((entry) => relative(folder, join(entry.parentPath ?? entry.path, entry.name)));
}

/** Every link between the pages leads to a page and an anchor that are there. */
function checkLinks() {
  const pages = new Map(filesIn(OUTPUT).map((name) => [name, name.endsWith(".html") ? readFileSync(join(OUTPUT, name), "utf8") : ""]));
  const dead = [];
  for (const [name, html] of pages) {
    for (const [, target] of html.matchAll(/\s(?:href|src)="([^"]*)"/g)) {
      if (!/^(https?|data|mailto):/.test(target)) {
        const [page, anchor] = target.split("#");
        const there = pages.get(page.split("?")[0] || name);
        if (there === undefined || anchor && !there.includes(`id="${anchor}"`)) {
          dead.push(`${name}: ${target}`);
        }
      }
    }
  }
  if (dead.length) {
    throw new Error(`links that lead nowhere:\n  ${[...new Set(dead)].join("\n  ")}`);
  }
}
