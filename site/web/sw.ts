/// <reference lib="webworker" />
// Keeps the site for use without a network: all pages from the start, the engine as soon as a page has loaded it.

const worker = self as unknown as ServiceWorkerGlobalScope;
const CACHE = `template-${BUILD}`;

worker.addEventListener("install", (event) => {
  event.waitUntil(caches.open(CACHE)
    .then((cache) => cache.addAll(SHELL.map((path) => new Request(path, { cache: "no-cache" }))))
    .then(() => worker.skipWaiting()));
});

worker.addEventListener("activate", (event) => {
  event.waitUntil(caches.keys()
    .then((names) => Promise.all(names.filter((name) => name !== CACHE).map((name) => caches.delete(name))))
    .then(() => worker.clients.claim()));
});

worker.addEventListener("fetch", (event) => {
  const { request } = event;
  if (request.method === "GET" && request.url.startsWith(worker.registration.scope)) {
    event.respondWith(answer(request));
  }
});

async function answer(request: Request): Promise<Response> {
  const cache = await caches.open(CACHE);
  const path = request.url.replace(/[?#].*/, "");
  const kept = await cache.match(path.endsWith("/") ? `${path}index.html` : path);
  if (kept) {
    return kept;
  }
  const response = await fetch(request);
  if (response.ok && path.includes("/engine/")) {
    await cache.put(path, response.clone());
  }
  return response;
}

// The page that has loaded the engine before this worker stood between them says so.
worker.addEventListener("message", ({ data }) => {
  caches.open(CACHE).then(async (cache) => {
    for (const path of data as string[]) {
      await cache.match(path) ?? await cache.add(path);
    }
  }).catch(() => {});
});
