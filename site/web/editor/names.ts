// Which names a file of a page may have; the engine refuses others.

const NAME = /^(?:[A-Za-z0-9_][A-Za-z0-9_.-]*\/){0,4}[A-Za-z0-9_][A-Za-z0-9_.-]*$/;
const LONGEST = 80;

/** What is wrong with a name among others, as a sentence; empty when it is right. */
export function nameFault(name: string, others: string[]): string {
  if (name === "") {
    return "A file needs a name.";
  }
  if (name.length > LONGEST) {
    return `A name has at most ${LONGEST} characters.`;
  }
  if (/(^|\/)\./.test(name)) {
    return "No part of a name may begin with a dot.";
  }
  if (name.startsWith("/") || name.endsWith("/") || name.includes("//")) {
    return "A slash stands between two names.";
  }
  if (!NAME.test(name)) {
    return "Letters, digits, “_”, “-”, “.” and up to four “/” make a name.";
  }
  if (others.includes(name)) {
    return "Another file has this name.";
  }
  const folder = others.find((other) => other.startsWith(`${name}/`) || name.startsWith(`${other}/`));
  return folder ? `A file and a folder can’t have the same name: ${folder}` : "";
}
