// @ts-check
// Speaks with eSpeak NG, a worker: what the page asks before the game begins, and then what the game
// orders at its desk. Its layout stands in page.h: `SpeakerDesk`.
import makeLibrary from "./espeak-ng.js";

const ASKED = 0, DROPPED = 1, READ = 2, WORDS_A_MINUTE = 3, VOLUME = 4, ORDER = 5, ORDER_BYTES = 6, NEWS = 7, DONE = 8,
  WRITTEN = 9, HEADER_BYTES = 40;
const SAMPLES = 1 << 14;

/** For the page's own texts, as the game takes it at first. */
const OWN = { voice: "gmw/en-US", wordsAMinute: 175, volume: 100 };

/**
 * @typedef {object} Library what is used of it
 * @property {() => {name: string, identifier: string, languages: {name: string, priority: number}[]}[]} list_voices
 * @property {() => number} get_samplerate
 * @property {(identifier: string, language: null) => number} set_voice
 * @property {(wordsAMinute: number) => void} set_rate
 * @property {(volume: number) => void} set_volume
 * @property {(text: string, take: (samples: Int16Array) => boolean) => void} synthesize until `take` wants no more
 * @typedef {{voice: string, wordsAMinute: number, volume: number}} Manner
 */

/** The voice that the library speaks with. */
let loaded = "";

/** @returns {Promise<Library>} */
async function opened() {
  const packed = await fetch(new URL("espeak-ng.pack", import.meta.url));
  if (!packed.ok || !packed.body) throw new Error("espeak-ng.pack is missing");
  const data = await new Response(packed.body.pipeThrough(new DecompressionStream("gzip"))).arrayBuffer();
  const made = await /** @type {any} */ (makeLibrary)({ getPreloadedPackage: () => data });
  return new made.eSpeakNGWorker();
}

/** @param {Library} library @param {string} text @param {Manner} manner @param {(samples: Int16Array) => boolean} take */
function speak(library, text, manner, take) {
  if (manner.voice !== loaded) library.set_voice(manner.voice, null);  // which reads its files anew
  loaded = manner.voice;
  library.set_rate(manner.wordsAMinute);
  library.set_volume(manner.volume);
  library.synthesize(text, take);
}

/** @param {Library} library @param {string} text */
function spoken(library, text) {
  /** @type {number[]} */
  const sound = [];
  speak(library, text, OWN, (samples) => {
    sound.push(...samples);
    return false;
  });
  return Float32Array.from(sound, (sample) => sample / 32768);
}

/**
 * For as long as the worker lives. Whoever takes the place of one that has died says again what that one was at.
 * @param {Library} library @param {SharedArrayBuffer} memory @param {number} at
 */
function serve(library, memory, at) {
  const desk = new Int32Array(memory, at, HEADER_BYTES / 4);
  const ring = new Int16Array(memory, at + HEADER_BYTES, SAMPLES);
  const decoder = new TextDecoder();
  const tell = () => {
    Atomics.add(desk, NEWS, 1);
    Atomics.notify(desk, NEWS);
  };
  let order = Atomics.load(desk, DONE) + 1;
  const isDropped = () => Atomics.load(desk, DROPPED) === order;
  /** @param {Int16Array} samples */
  const write = (samples) => {
    for (let from = 0; from < samples.length;) {
      const read = Atomics.load(desk, READ);
      if (isDropped()) return true;
      const written = Atomics.load(desk, WRITTEN), at = written & (SAMPLES - 1);
      const count = Math.min(samples.length - from, SAMPLES - (written - read | 0), SAMPLES - at);
      if (count === 0) {
        Atomics.wait(desk, READ, read);
        continue;
      }
      ring.set(samples.subarray(from, from + count), at);
      from += count;
      Atomics.store(desk, WRITTEN, written + count);
      tell();
    }
    return false;
  };
  for (;; ++order) {
    while (Atomics.load(desk, ASKED) < order) Atomics.wait(desk, ASKED, order - 1);
    const bytes = new Uint8Array(memory, desk[ORDER], desk[ORDER_BYTES]).slice();
    const [voice, text] = decoder.decode(bytes).split("\0");
    // One that killed the worker before this is dropped in time, and not spoken once more.
    if (!isDropped()) speak(library, text, { voice, wordsAMinute: desk[WORDS_A_MINUTE], volume: desk[VOLUME] }, write);
    Atomics.store(desk, DONE, order);
    tell();
  }
}

const library = await opened();
spoken(library, "one");  // The first text takes by far the longest.
/** @param {MessageEvent<{text: string} | {memory: SharedArrayBuffer, desk: number}>} message */
self.onmessage = ({ data }) => {
  if ("memory" in data) serve(library, data.memory, data.desk);
  else self.postMessage(spoken(library, data.text));
};
self.postMessage({
  sampleRate: library.get_samplerate(),
  voices: library.list_voices().map(({ name, identifier, languages: [first] }) =>
    ({ name, identifier, language: first.name, priority: first.priority })),
});
