// What a page of the site may do, said by the pages themselves and by a server that sends build/site/_headers.

// The frame that shows a rendered page inherits this: 'unsafe-inline' is for that page's styles and for the editors'. A page
// from disk has its Worker from a blob.
const policy = (workers) => "default-src 'none'; script-src 'self' 'wasm-unsafe-eval'; "
  + `worker-src ${workers}; connect-src 'self'; style-src 'self' 'unsafe-inline'; `
  + "img-src 'self' data:; base-uri 'none'; form-action 'none'";

export const POLICY = policy("'self' blob:");

export const HEADERS = [
  `Content-Security-Policy: ${policy("'self'")}; frame-ancestors 'none'`,
  "X-Content-Type-Options: nosniff",
  "Referrer-Policy: no-referrer",
  "Cross-Origin-Opener-Policy: same-origin",
  "Cache-Control: no-cache",
];
