// A page with all of its files as one .zip, and back.

import { strFromU8, strToU8, unzipSync, zipSync } from "fflate";
import { SCRIPT } from "../../../wasm/web/engine";
import { nameFault } from "../editor/names";
import { DATA, PAGE, type State, type TemplateFile } from "../editor/state";

const LARGEST = 1 << 20;

export function download({ files, data }: State): void {
  const all = Object.fromEntries([...files, { name: DATA, text: data }].map(({ name, text }) => [name, strToU8(text)]));
  const link = document.createElement("a");
  link.href = URL.createObjectURL(new Blob([zipSync(all) as Uint8Array<ArrayBuffer>], { type: "application/zip" }));
  link.download = "template.zip";
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), 10_000);
}

/**
 * The page that these files make: those of a .zip, or templates and a .json for the data. The page is script.php, page.tpl,
 * else the only template that stands in no folder, else the first one.
 *
 * @throws Error with a sentence for the reader
 */
export async function opened(uploads: File[], data: string): Promise<Pick<State, "files" | "data">> {
  let files: TemplateFile[] = [];
  for (const upload of uploads) {
    const bytes = new Uint8Array(await upload.arrayBuffer());
    files.push(...upload.name.endsWith(".zip") ? unzipped(upload.name, bytes) : [{ name: upload.name, text: strFromU8(bytes) }]);
  }
  const json = files.filter(({ name }) => name.endsWith(".json"));
  const chosen = json.find(({ name }) => name === DATA) ?? json[0];
  files = files.filter((file) => file !== chosen);
  if (!files.length) {
    throw new Error("There is no template among these files.");
  }
  if (files.reduce((sum, { text }) => sum + text.length, 0) > LARGEST) {
    throw new Error("These files are larger than 1 MB.");
  }
  const page = files.find(({ name }) => name === SCRIPT) ?? files.find(({ name }) => name === PAGE) ?? files.find(({ name }) => !name.includes("/")) ?? files[0];
  const parts = files.filter((file) => file !== page);
  const first = page.name === SCRIPT ? SCRIPT : PAGE;
  for (const { name } of parts) {
    const fault = nameFault(name, [first, ...parts.map((file) => file.name).filter((other) => other !== name)]);
    if (fault) {
      throw new Error(`${name}: ${fault}`);
    }
  }
  return { files: [{ name: first, text: page.text }, ...parts], data: chosen?.text ?? data };
}

function unzipped(name: string, bytes: Uint8Array): TemplateFile[] {
  let total = 0;
  try {
    const files = unzipSync(bytes, { filter: (file) => !file.name.endsWith("/") && (total += file.originalSize) <= LARGEST });
    const names = Object.keys(files);
    const folder = /^[^/]+\//.exec(names[0] ?? "")?.[0] ?? "";
    const cut = names.every((each) => each.startsWith(folder)) ? folder.length : 0;
    return names.map((each) => ({ name: each.slice(cut), text: strFromU8(files[each]) }));
  } catch {
    throw new Error(`${name} can’t be read as a .zip.`);
  } finally {
    if (total > LARGEST) {
      throw new Error(`${name} holds more than 1 MB.`);
    }
  }
}
