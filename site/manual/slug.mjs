// The anchors of headings, as the hosts of repositories make them, so that links work there and here.

export function slug(text) {
  return text.trim().toLowerCase().replace(/[^\p{L}\p{N}\p{M} _-]/gu, "").replaceAll(" ", "-");
}
