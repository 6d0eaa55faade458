// @ts-check
// What reaches the audio worklet is what the headless session renders.
// Runs within with_desktop.sh: Firefox plays nothing where there is no sound device.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { pass } from "./browser.js";
import { withRecorder } from "./recorder.js";
import { atTheMenu, check, figures, MENU, visitor, withKiller } from "./visit.js";

const program = process.env.VORN_PROGRAM ?? "", sounds = process.env.VORN_SOUNDS ?? "";
const RATE = 48000, SECONDS = 4;

/** The first seconds of a headless session, left side. */
function renderedStart() {
  const work = mkdtempSync(join(tmpdir(), "vorn1-web-"));
  const script = join(work, "script"), folder = join(work, "folder"), render = join(work, "mix.raw");
  execFileSync("sh", ["-c", `mkdir ${folder}; cp ${sounds}/*.wav ${folder}; printf 'wait ${1000 * SECONDS}\\nend\\n' >${script}`]);
  try {
    execFileSync(program, ["--headless", "--script", script, "--render", render, "--folder", folder]);
    const raw = readFileSync(render);
    const samples = new Int16Array(raw.buffer, raw.byteOffset, raw.length / 2);
    return Float32Array.from({ length: samples.length / 2 }, (_, i) => samples[2 * i] / 32767);
  } finally {
    rmSync(work, { recursive: true });
  }
}

/** How alike `piece` and what was captured from `at` on are: 1 is the same but for loudness. */
function alike(piece, captured, at, step = 1) {
  let both = 0, one = 0, other = 0;
  for (let i = 0; i < piece.length; i += step) {
    const a = piece[i], b = captured[at + i] ?? 0;
    both += a * b;
    one += a * a;
    other += b * b;
  }
  return one && other ? both / Math.sqrt(one * other) : 0;
}

const SAME = 0.98;

/** Where in `from` .. `to` what was captured is most like `piece`; nothing where it is not the same anywhere. */
function placeOf(piece, captured, from, to) {
  let best = { likeness: 0, at: 0 };
  for (let at = from; at < to; ++at) {
    const likeness = alike(piece, captured, at, 8);
    if (likeness > best.likeness) best = { likeness, at };
  }
  return alike(piece, captured, best.at) >= SAME ? best.at : null;
}

/**
 * Follows what was rendered, in pieces, through what was captured.
 * @returns {{pieces: number, found: number, delays: number[]}} how many there are, how many sound the same, and for
 * each of these by how many samples it was heard later than the one before, measured by what was rendered
 */
function followed(rendered, captured) {
  const LENGTH = RATE / 20, LOUD = 0.01, FURTHEST = RATE / 2;
  /** @type {number[]} */
  const delays = [];
  let pieces = 0, found = 0, shift = null;
  for (let at = 0; at + LENGTH <= rendered.length; at += LENGTH) {
    const piece = rendered.subarray(at, at + LENGTH);
    if (piece.every((sample) => Math.abs(sample) < LOUD)) continue;
    ++pieces;
    let place = null;
    if (shift === null) place = placeOf(piece, captured, 0, captured.length - LENGTH);
    else if (alike(piece, captured, at + shift) >= SAME) place = at + shift;
    else place = placeOf(piece, captured, at + shift, Math.min(at + shift + FURTHEST, captured.length - LENGTH));
    if (place === null) continue;
    ++found;
    if (shift !== null) delays.push(place - at - shift);
    shift = place - at;
  }
  return { pieces, found, delays };
}

check("what reaches the worklet is what the headless session renders, when it renders it", async () => {
  const player = await visitor(withRecorder);
  await player.start();
  await player.hears(MENU);
  const captured = Float32Array.from(await player.page.evaluate(() => window.captured));
  const { pieces, found, delays } = followed(renderedStart(), captured);
  const told = `${found} of ${pieces} pieces, delays ${delays.filter((delay) => delay > 0)}; ${captured.length / RATE} s captured`;
  // A busy machine leaves gaps, behind which all is heard later; between them not a sample is out of place.
  assert.ok(pieces >= 30, told);
  assert.ok(found >= 0.6 * pieces, told);
  assert.ok(delays.filter((delay) => delay === 0).length >= 0.6 * delays.length, told);
});

check("sound that the browser halts is taken up again, at a key at the latest", async () => {
  const player = await atTheMenu({}, (page) => page.evaluateOnNewDocument(() => {
    window.AudioContext = class extends AudioContext {
      constructor(options) {
        super(options);
        window.audio = this;
        this.halts = 0;
        this.addEventListener("statechange", () => { this.halts += Number(this.state === "suspended"); });
      }
    };
  }));
  await player.until(() => window.audio.state === "running");
  const halt = () => player.page.evaluate(() => void window.audio.suspend());
  const isBack = (halts) => player.until((count) => window.audio.halts === count && window.audio.state === "running", halts);
  await halt();
  await isBack(1);
  await player.page.evaluate(() => { window.audio.resume = async () => { throw new Error("refused"); }; });
  await halt();
  await player.until(() => window.audio.halts === 2 && window.audio.state === "suspended");
  await player.page.evaluate(() => { delete window.audio.resume; });
  await player.press("ArrowUp");
  await isBack(2);
});

check("a sound device that is late is told of, once", async () => {
  const player = await atTheMenu({}, (page) => page.evaluateOnNewDocument(() => {
    Object.defineProperty(AudioContext.prototype, "outputLatency", { get: () => 0.2314 });
  }));
  const LATE = "Your sound device is late: everything is heard 231 milliseconds after it happens.";
  await player.hears(LATE);
  await pass(10000);
  assert.equal((await player.heard()).filter((said) => said.includes(LATE)).length, 1);
});

check("sound that does not come in time is counted", async () => {
  const player = await atTheMenu({}, withKiller);
  const before = await figures(player);
  assert.ok(before.playedS > 0 && before.aheadMs > 0, JSON.stringify(before));
  await player.page.evaluate(() => window.killWorkers());
  await player.until(({ gaps, missedMs }) => {
    const now = /** @type {any} */ (window).vornFigures();
    return now.gaps > gaps && now.missedMs > missedMs + 500;
  }, before);
});
