// @ts-check
// The embedded voice in Node: the page's worker, the game's side of it and the mixer between them.
//   VORN_WEB_PROGRAMS=FOLDER node --test voice_in_node.js    FOLDER: with speaking.js
import assert from "node:assert/strict";
import { cpSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { fileURLToPath, pathToFileURL } from "node:url";
import { Worker } from "node:worker_threads";
import { recognised } from "./recogniser.js";

const programs = process.env.VORN_WEB_PROGRAMS ?? "";
const site = fileURLToPath(new URL("../../build/web/site", import.meta.url));
const TEXT = " The next sound that you hear will come out of the left speaker. ";
const NORMAL = { voice: 0, volume: 100, rate: 0 };
const RATE = 48000, QUIET = 1e-4, PATIENCE_MS = 60000;

/** The page's scripts, where Node takes them for modules as browsers do. */
const work = mkdtempSync(join(tmpdir(), "vorn1-web-"));
for (const file of ["speaker.js", "espeak-ng.js", "espeak-ng.pack"]) cpSync(join(site, file), join(work, file));
writeFileSync(join(work, "package.json"), '{ "type": "module" }');

/** The page's worker, which finds here what a browser has. */
const AS_IN_A_BROWSER = `
  const { parentPort } = require("node:worker_threads");
  const { readFile } = require("node:fs/promises");
  globalThis.self = globalThis;
  globalThis.postMessage = (message) => parentPort.postMessage(message);
  parentPort.on("message", (data) => self.onmessage({ data }));
  globalThis.fetch = async (url) => new Response(await readFile(url));
  import(${JSON.stringify(pathToFileURL(join(work, "speaker.js")).href)});
`;

const pass = (ms) => new Promise((resolve) => setTimeout(resolve, ms));

async function until(condition, what) {
  for (const end = performance.now() + PATIENCE_MS; !condition(); await pass(1)) {
    assert.ok(performance.now() < end, what);
  }
}

const VOICE_LOST = 10;  // see page.h
let worker, offer, game;
/** @type {number[]} what the page has been told */
const told = [];

/** A worker that is there; `offer` is what it offers. */
async function hired() {
  const one = new Worker(AS_IN_A_BROWSER, { eval: true });
  offer = await new Promise((resolve, reject) => one.once("message", resolve).once("error", reject));
  return one;
}
function serve() {
  worker.postMessage({ memory: game.wasmMemory.buffer, desk: game._vorn_give_synth(offer.sampleRate) });
}

before(async () => {
  worker = await hired();
  game = await createRequire(import.meta.url)(join(programs, "speaking.js"))({
    wasmBinary: readFileSync(join(programs, "speaking.wasm")),
    told: (what) => told.push(what),
  });
  for (const { name, identifier, language, priority } of offer.voices) {
    game.ccall("vorn_give_synth_voice", null, ["string", "string", "string", "number"], [name, identifier, language, priority]);
  }
  serve();
  game._speaking_begin(PATIENCE_MS);
});
after(async () => {
  game._speaking_end();
  game.PThread.terminateAllThreads();
  await worker.terminate();
  rmSync(work, { recursive: true });
});

const say = (text, manner) => {
  const { voice, volume, rate } = { ...NORMAL, ...manner };
  game.ccall("speaking_say", null, ["string", "number", "number", "number"], [text, voice, volume, rate]);
};

/** The next milliseconds of sound, its left side. @param {number} ms @returns {Float32Array} */
function played(ms) {
  const at = game._speaking_play(ms) / 4;
  return game.HEAPF32.slice(at, at + 2 * ms * RATE / 1000).filter((_, i) => i % 2 === 0);
}
const loudestOf = (samples) => samples.reduce((most, sample) => Math.max(most, Math.abs(sample)), 0);

/** Plays until nothing is said any more. @returns {Promise<{seconds: number, loudest: number, sound: Float32Array}>} */
async function heard() {
  /** @type {number[]} */
  const sound = [];
  for (const end = performance.now() + PATIENCE_MS; game._speaking_is_speaking();) {
    assert.ok(performance.now() < end, "it never ends");
    if (!game._speaking_is_ready()) {
      await pass(1);
      continue;
    }
    sound.push(...played(1));
  }
  return { seconds: sound.length / RATE, loudest: loudestOf(sound), sound: Float32Array.from(sound) };
}

async function spoken(text, manner) {
  say(text, manner);
  return heard();
}

test("a text is heard, and takes the less time the higher the rate", async () => {
  const seconds = [];
  for (const rate of [-5, 0, 5, 10]) {
    const speech = await spoken(TEXT, { rate });
    assert.ok(speech.loudest > 0.1, `rate ${rate}: ${speech.loudest}`);
    seconds.push(speech.seconds);
  }
  const normal = seconds[1];
  [-5, 0, 5, 10].forEach((rate, i) => {
    const wanted = 3 ** (-rate / 10);
    assert.ok(Math.abs(seconds[i] / normal - wanted) < 0.15 * Math.max(1, wanted), `rate ${rate}: ${seconds}`);
  });
});

test("a recogniser understands it", async () => {
  const sentences = ["start game", "exit game", "check speakers", "change voice"];
  for (const sentence of sentences) {
    const { sound } = await spoken(` ${sentence}. `);
    assert.equal(recognised(sound, RATE, sentences), sentence);
  }
});

test("it speaks from the request on until the last sound, and then no more", async () => {
  assert.equal(game._speaking_is_speaking(), 0);
  say(" Exit Game. ");
  assert.equal(game._speaking_is_speaking(), 1);
  const { seconds } = await heard();
  assert.ok(seconds > 0.4 && seconds < 1.5, String(seconds));
  assert.ok(loudestOf(played(300)) < QUIET);
});

test("the first sound comes without silence in front of it", async () => {
  say(" Check speakers ");
  await until(() => game._speaking_is_ready(), "no sound");
  assert.ok(loudestOf(played(12)) > QUIET);
  await heard();
});

test("texts follow each other whole, also those longer than what waits to be played", async () => {
  const one = await spoken(TEXT);
  for (let i = 0; i < 3; ++i) say(TEXT);
  const three = await heard();
  assert.ok(Math.abs(three.seconds - 3 * one.seconds) < 0.5 * one.seconds, `${one.seconds}, ${three.seconds}`);
  const long = await spoken(TEXT.repeat(4));
  assert.ok(long.seconds > 3 * one.seconds, `${one.seconds}, ${long.seconds}`);
});

test("a purge silences at once, and what follows it is heard", async () => {
  for (let i = 0; i < 10; ++i) {
    say(TEXT.repeat(4));
    if (i % 2) await until(() => game._speaking_is_ready(), "no sound");
    played(20 * i);
    game._speaking_purge();
    assert.equal(game._speaking_is_speaking(), 0);
    played(10);
    assert.ok(loudestOf(played(200)) < QUIET);
    await pass(5 * i);
    assert.ok(loudestOf(played(200)) < QUIET, "what was purged is written later");
  }
  const after = await spoken("one");
  assert.ok(after.loudest > 0.1 && after.seconds < 1.2, JSON.stringify(after));
});

test("after a purge nobody waits for the rest of a long text", async () => {
  const began = performance.now();
  await spoken("one");
  const usual = performance.now() - began;
  say(TEXT.repeat(1000));
  await until(() => game._speaking_is_ready(), "no sound");
  game._speaking_purge();
  const purged = performance.now();
  await spoken("one");
  const after = performance.now() - purged;
  assert.ok(after < 10 * usual + 1000, `${after} ms instead of ${usual}`);
});

test("the volume scales, down to nothing heard in the same time", async () => {
  const full = await spoken(TEXT), half = await spoken(TEXT, { volume: 50 }), none = await spoken(TEXT, { volume: 0 });
  assert.ok(Math.abs(half.loudest / full.loudest - 0.5) < 0.1, `${half.loudest} of ${full.loudest}`);
  assert.ok(none.loudest < QUIET);
  assert.ok(Math.abs(none.seconds - full.seconds) < 0.3, `${none.seconds}, ${full.seconds}`);
});

test("American English is the first voice, and every voice speaks in its own way", async () => {
  const english = offer.voices.map(({ language }) => language);
  assert.ok(english.length >= 5 && english.every((language) => language.startsWith("en")), String(english));
  const american = await spoken(TEXT);
  for (let voice = 0; voice < english.length; ++voice) assert.ok((await spoken("Exit Game.", { voice })).loudest > 0.1, String(voice));
  const again = await spoken(TEXT), other = await spoken(TEXT, { voice: 1 });
  assert.ok(Math.abs(again.seconds - american.seconds) < 0.02, `${again.seconds}, ${american.seconds}`);
  assert.ok(Math.abs(other.seconds - american.seconds) > 0.02, `${other.seconds}, ${american.seconds}`);
});

test("nothing is read as markup", async () => {
  for (const [text, less] of [["<b>lap</b>", "lap"], ["lap &lt; 3", "lap < 3"]]) {
    const whole = await spoken(text), bare = await spoken(less);
    assert.ok(whole.seconds > bare.seconds + 0.1, `${text}: ${whole.seconds}, ${bare.seconds}`);
  }
});

test("blank texts end", async () => {
  for (const text of [" ", ".", "\x1B"]) assert.ok((await spoken(text)).seconds < 0.2, text);
});

test("before the game orders, the page gets its own texts", async () => {
  const own = await hired();
  own.postMessage({ text: "Press Enter now." });
  const sound = await new Promise((resolve) => own.once("message", resolve));
  await own.terminate();
  assert.ok(sound.length > 0.5 * offer.sampleRate && sound.length < 3 * offer.sampleRate, String(sound.length));
  assert.ok(loudestOf(sound) > 0.1 && loudestOf(sound) <= 1, String(loudestOf(sound)));
});

test("whoever takes the place of a worker that dies says again what that one was at", async () => {
  const one = await spoken(TEXT);
  say(TEXT);
  await until(() => game._speaking_is_ready(), "no sound");
  await worker.terminate();
  worker = await hired();
  serve();
  const again = await heard();
  assert.ok(again.seconds > one.seconds - 0.1 && again.seconds < 2.2 * one.seconds, `${one.seconds}, ${again.seconds}`);
  assert.deepEqual(told, []);
});

test("a worker that does nothing is told of and its text given up, once another is there others are heard", async () => {
  game._speaking_end();
  game._speaking_begin(1000);
  await worker.terminate();
  say(TEXT);
  await until(() => !game._speaking_is_speaking(), "it is never given up");
  await until(() => told.includes(VOICE_LOST), "nobody is told");
  worker = await hired();
  serve();
  const { seconds, loudest } = await spoken("one");
  assert.ok(loudest > 0.1 && seconds < 1.2, `${seconds} s, ${loudest}`);
});

test("the end waits for no worker", async () => {
  await worker.terminate();
  say("one");
  const began = performance.now();
  game._speaking_end();
  assert.ok(performance.now() - began < PATIENCE_MS / 2);
  game._speaking_begin(1000);
});
