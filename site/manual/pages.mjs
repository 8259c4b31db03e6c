// The pages that are made of Markdown, in the order of the menu: where they stand in the source tree, and on the site.

export const MANUAL = [
  { source: "docs/README.md", url: "manual.html", menu: "Overview" },
  { source: "docs/guide.md", url: "guide.html", menu: "Guide" },
  { source: "docs/reference.md", url: "reference.html", menu: "Reference" },
  { source: "docs/recipes.md", url: "recipes.html", menu: "Recipes" },
  { source: "docs/messages.md", url: "messages.html", menu: "Messages" },
  { source: "docs/surprises.md", url: "surprises.html", menu: "Surprises" },
  { source: "docs/coming-from.md", url: "coming-from.html", menu: "Coming from …" },
  { source: "docs/frameworks.md", url: "frameworks.html", menu: "Frameworks" },
  { source: "docs/deployment.md", url: "deployment.html", menu: "Deployment" },
  { source: "docs/platforms.md", url: "platforms.html", menu: "Platforms" },
  { source: "docs/teams.md", url: "teams.html", menu: "In a team" },
  { source: "docs/editors.md", url: "editors.html", menu: "Editors" },
  { source: "docs/security.md", url: "security.html", menu: "Security" },
  { source: "SECURITY.md", url: "promises.html", menu: "What is promised" },
  { source: "bench/RESULTS.md", url: "results.html", menu: "Benchmark" },
  { source: "CHANGELOG.md", url: "changelog.html", menu: "Changes" },
];

/** Files that pages show, besides. */
export const FILES = [{ source: "bench/results.svg", url: "assets/results.svg" }];
