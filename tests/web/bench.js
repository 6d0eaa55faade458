// @ts-check
// The figures of the page; run by tests/web/bench.
import { loadavg } from "node:os";
import { test } from "node:test";
import { pass } from "./browser.js";
import { driveALap } from "./driver.js";
import { atTheMenu, figures, visitor } from "./visit.js";

const KEYS = Number(process.argv[2] ?? 8);
const QUIET_MS = 3500;  // until an entry has been said to its end

/** Notes when a key comes to the page, and when the first sound behind it goes to the device. */
function withStopwatch(page) {
  return page.evaluateOnNewDocument(() => {
    const ear = `registerProcessor("ear", class extends AudioWorkletProcessor {
      quiet = 0;
      process([input]) {
        const [left = []] = input;
        const at = left.findIndex((sample) => Math.abs(sample) > 1e-4);
        if (at >= 0 && this.quiet > 0.3 * sampleRate) this.port.postMessage(Date.now() + 1000 * at / sampleRate);
        this.quiet = at < 0 ? this.quiet + 128 : 0;
        return true;
      }
    });`;
    const addModule = AudioWorklet.prototype.addModule, connect = AudioNode.prototype.connect;
    window.sounds = [];
    window.keys = [];
    document.addEventListener("keydown", (event) => {
      if (event.code === "ArrowUp") window.keys.push(performance.timeOrigin + event.timeStamp);
    }, true);
    AudioWorklet.prototype.addModule = async function (...args) {
      await addModule.call(this, URL.createObjectURL(new Blob([ear], { type: "text/javascript" })));
      return addModule.apply(this, args);
    };
    AudioNode.prototype.connect = function (...args) {
      if (this instanceof AudioWorkletNode) {
        const node = new AudioWorkletNode(this.context, "ear", { numberOfOutputs: 0 });
        node.port.onmessage = ({ data }) => window.sounds.push(data);
        connect.call(this, node);
      }
      return connect.apply(this, args);
    };
  });
}

const rounded = (ms) => `${ms.toFixed(2)} ms`;

/** @param {string} what @param {object} found */
function print(what, found) {
  console.log(`${what}\n${Object.entries(found).map(([name, value]) => `  ${name}: ${value}`).join("\n")}`);
  console.log(`  load of the machine: ${loadavg()[0].toFixed(1)}`);
}

test("from a key in the menu to the embedded voice", { timeout: 600000 }, async () => {
  const player = await atTheMenu({ voice: "embedded" }, withStopwatch);
  await pass(2 * QUIET_MS);
  const delays = [];
  for (let i = 0; i < KEYS; ++i) {
    await player.press("ArrowUp");
    await pass(QUIET_MS);
    const { keys, sounds } = await player.page.evaluate(() => ({ keys: window.keys, sounds: window.sounds }));
    const pressed = keys.at(-1);
    const heard = sounds.find((at) => at >= pressed);
    if (heard === undefined) throw new Error(`nothing was heard behind key ${i + 1}`);
    delays.push(heard - pressed);
  }
  delays.sort((one, other) => one - other);
  const { aheadMs, deviceMs, gaps } = await figures(player);
  print("from a key in the menu to its voice at the device", {
    keys: KEYS, p50: rounded(delays[Math.floor(KEYS / 2)]), most: rounded(delays[KEYS - 1]),
    "kept ready": rounded(aheadMs), "the device's own": rounded(deviceMs), gaps,
  });
});

test("a race", { timeout: 1200000 }, async () => {
  const player = await visitor();
  let before = { gaps: 0, missedMs: 0, playedS: 0 };
  await driveALap(player, async () => {
    before = await figures(player);
  });
  const after = await figures(player);
  const late = after.tickLateMs;
  print("a race from its horn to its result", {
    "gaps before it": before.gaps, "gaps in it": after.gaps - before.gaps, missed: rounded(after.missedMs - before.missedMs),
    lasted: `${(after.playedS - before.playedS).toFixed(1)} s`, "kept ready": rounded(after.aheadMs),
    ticks: after.tickWaits, "late p50": rounded(late.p50), p99: rounded(late.p99), most: rounded(late.most),
  });
});
