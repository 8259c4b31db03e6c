// The frame that shows a rendered page. It can do nothing: no scripts, no windows, nothing from elsewhere.

// A fragment without a style of its own looks like a page; anything that the page says counts more. Links lead nowhere:
// new windows are forbidden to the frame.
const BASE = "<base target=_blank><style>:where(html){font:16px/1.5 system-ui,sans-serif}:where(body){margin:1rem}</style>";

/** `frame` has the attribute sandbox="". */
export function showInFrame(frame: HTMLIFrameElement, page: string): void {
  frame.srcdoc = BASE + page;
}

/** Whether there is something that looks better in a frame than as text. */
export const isHtml = (page: string) => /<[a-z][^<>]*>/i.test(page);
