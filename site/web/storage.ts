// What this browser keeps for the reader. A browser may refuse to keep anything; then the page does without.

const NAME = "template-site.";

export function kept(name: string): string | null {
  try {
    return localStorage.getItem(NAME + name);
  } catch {
    return null;
  }
}

export function keep(name: string, value: string): void {
  try {
    localStorage.setItem(NAME + name, value);
  } catch {
    // Full, or forbidden.
  }
}
