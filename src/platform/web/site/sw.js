// @ts-check
// Lets the game be played without a network, and sends the two headers without which
// browsers give a page no threads, whatever host the files lie on.

/** @type {string} of the files that belong together; set by the build */
const VERSION = "@VERSION@";
/** @type {string[]} set by the build */
const FILES = JSON.parse('@FILES@');
const worker = /** @type {ServiceWorkerGlobalScope} */ (/** @type {unknown} */ (self));

worker.addEventListener("install", (event) => {
  event.waitUntil(
    caches.open(VERSION)
      .then((cache) => Promise.all(FILES.map(async (file) => {
        const answer = await fetch(file, { cache: "no-cache" });
        if (!answer.ok) throw new Error(file);
        await cache.put(file, answer);
      })))
      .then(() => worker.skipWaiting()));
});

worker.addEventListener("activate", (event) => {
  event.waitUntil(
    caches.keys()
      .then((names) => Promise.all(names.filter((name) => name !== VERSION).map((name) => caches.delete(name))))
      .then(() => worker.clients.claim()));
});

/**
 * @param {Response} answer
 * @returns {Response} the same, with leave for threads
 */
function isolated(answer) {
  const headers = new Headers(answer.headers);
  headers.set("Cross-Origin-Opener-Policy", "same-origin");
  headers.set("Cross-Origin-Embedder-Policy", "require-corp");
  headers.set("Cross-Origin-Resource-Policy", "same-origin");
  return new Response(answer.body, { status: answer.status, statusText: answer.statusText, headers });
}

worker.addEventListener("fetch", (event) => {
  if (event.request.method !== "GET") return;
  event.respondWith(
    caches.open(VERSION)
      .then((cache) => cache.match(event.request, { ignoreSearch: true }))
      .then((stored) => stored ?? fetch(event.request))
      .then(isolated));
});
