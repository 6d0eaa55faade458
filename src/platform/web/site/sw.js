// @ts-check
// Lets the game be played without a network, and sends the two headers without which
// browsers give a page no threads, whatever host the files lie on.

/** @type {string} of the files that belong together; set by the build */
const VERSION = "@VERSION@";
/** @type {string[]} set by the build */
const FILES = JSON.parse('@FILES@');
/** @type {string[]} of these, those that lie there as FILE.packed, too, by gzip; set by the build */
const PACKED = JSON.parse('@PACKED@');
/** @type {Record<string, string>} */
const TYPES = { html: "text/html", js: "text/javascript", wasm: "application/wasm" };
const worker = /** @type {ServiceWorkerGlobalScope} */ (/** @type {unknown} */ (self));

/** @param {string} file */
async function fetched(file) {
  const isPacked = PACKED.includes(file);
  const answer = await fetch(isPacked ? `${file}.packed` : file, { cache: "no-cache" });
  if (!answer.ok || !answer.body) throw new Error(file);
  if (!isPacked) return answer;
  const type = TYPES[file.split(".").pop() ?? ""] ?? "text/plain";
  return new Response(answer.body.pipeThrough(new DecompressionStream("gzip")), { headers: { "Content-Type": type } });
}

worker.addEventListener("install", (event) => {
  event.waitUntil(
    caches.open(VERSION)
      .then((cache) => Promise.all(FILES.map(async (file) => cache.put(file, await fetched(file)))))
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
