// What the scripts of a page leave for each other, and what the build puts into them.

interface SearchSection {
  page: string;
  url: string;
  title: string;
  text: string;
}

interface Window {
  openSearch?(): void;
  editExample?(example: import("./editor/state").ManualExample, place: HTMLElement, button: HTMLElement): Promise<void>;
  searchSections?: SearchSection[];
}

/** The site's files but for the engine, from its root on. */
declare const SHELL: string[];
/** Another one for each build that differs. */
declare const BUILD: string;
