// @ts-check
// The browser's own voices, played by a double that does what the test wants of them.
import assert from "node:assert/strict";
import { atTheMenu, check, choose, MENU, pastTheTitle, visitor } from "./visit.js";

/** Besides what a browser has, as `window.synth`: what was asked of it, and how it treats what it is to say. */
function withVoices({ voices = ["English, en-GB", "Français, fr-FR, default", "American, en-US, default"], lateBy = 0 } = {}) {
  return (page) => page.evaluateOnNewDocument((named, late) => {
    class Utterance {
      constructor(text) {
        Object.assign(this, { text, voice: null, lang: "", rate: 1, volume: 1, onend: null, onerror: null });
      }
    }
    const offered = named.map((name) => name.split(", ")).map(([name, lang, isDefault]) => ({ name, lang, default: !!isDefault }));
    let calls = 0;
    const synth = {
      spoken: [], waiting: [], cancelled: 0, fails: "",
      isHolding: false,  // until the test says that it has come to its end
      getVoices: () => (calls++ < late ? [] : offered),
      speak(utterance) {
        const { text, voice, lang, rate, volume } = utterance;
        synth.spoken.push({ text, voice: voice?.name, lang, rate, volume });
        synth.waiting.push(utterance);
        if (!synth.isHolding) setTimeout(synth.end, 5);
      },
      end() {
        const utterance = synth.waiting.shift();
        if (!synth.fails) utterance?.onend?.(new Event("end"));
        else utterance?.onerror?.(Object.assign(new Event("error"), { error: synth.fails }));
      },
      /** Tells of each text that it comes to nothing, after the call, as browsers do. */
      cancel() {
        ++synth.cancelled;
        for (const utterance of synth.waiting.splice(0)) {
          setTimeout(() => utterance.onerror?.(Object.assign(new Event("error"), { error: "canceled" })), 20);
        }
      },
      resume() {},
    };
    window.synth = synth;
    Object.defineProperty(window, "speechSynthesis", { value: synth });
    window.SpeechSynthesisUtterance = Utterance;
  }, voices, lateBy);
}

/** @param {import("./browser.js").Player} player @returns {Promise<{text: string, voice: string, lang: string, rate: number, volume: number}>} */
async function lastSpoken(player, text) {
  const found = await player.until((part) => window.synth.spoken.findLast((one) => one.text.includes(part)) ?? null, text);
  return found.jsonValue();
}

const BROWSER = { voice: "browser" };

check("the browser's voices are offered, English before others and its own choice first, and take rate and volume", async () => {
  const player = await atTheMenu(BROWSER, withVoices());
  assert.deepEqual(await lastSpoken(player, MENU), { text: ` ${MENU} `, voice: "American", lang: "en-US", rate: 1, volume: 0.9 });
  await choose(player, "adjust rate of speech");
  await player.answers("Enter", /^0$/);
  await player.answers("ArrowUp", /^1$/);
  assert.equal((await lastSpoken(player, "1")).rate.toFixed(4), (3 ** 0.1).toFixed(4));
  await player.press("Enter");
  await choose(player, "change voice");
  await player.answers("Enter", "do you wish to use this voice? yes");
  for (const name of ["English", "Français"]) {
    await player.answers("ArrowDown", "no");
    await player.answers("Enter", `${name}.`);
    assert.equal((await lastSpoken(player, `${name}. `)).voice, name);
    await player.hears("do you wish to use this voice? yes");
  }
  assert.deepEqual(player.problems, []);
});

check("voices that a browser finds late are taken", async () => {
  const player = await atTheMenu(BROWSER, withVoices({ lateBy: 8 }));
  assert.equal((await lastSpoken(player, MENU)).voice, "American");
});

check("the game waits for the end of what is said, and a key cuts it short", async () => {
  const player = await visitor(withVoices());
  await player.page.evaluate(() => { window.synth.isHolding = true; });
  await player.start(BROWSER);
  await player.until(() => window.synth.waiting.length > 0);  // the blank that makes a voice ready
  await player.page.evaluate(() => window.synth.end());
  const title = "Vorn 1 tts version 2 By Ostrin";
  await player.hears(title);
  await player.until((text) => window.synth.waiting.some((one) => one.text.includes(text)), title);
  await player.page.evaluate(() => new Promise((resolve) => setTimeout(resolve, 2000)));
  assert.ok(!(await player.heard()).includes(MENU), "the menu came into the title");
  await player.page.evaluate(() => window.synth.end());
  for (;;) {
    const next = await player.hears("");
    if (next === MENU) break;
    await player.until(() => window.synth.waiting.length > 0);
    await player.page.evaluate(() => window.synth.end());
  }
  const cancelled = await player.page.evaluate(() => window.synth.cancelled);
  await player.answers("ArrowUp", "Start Game.");
  await player.until(() => window.synth.waiting.at(-1)?.text.includes("Start Game."));
  const now = await player.page.evaluate(() => ({ cancelled: window.synth.cancelled, waiting: window.synth.waiting.map((one) => one.text) }));
  assert.ok(now.cancelled > cancelled);
  assert.deepEqual(now.waiting, [" Start Game. "], "the menu's text is still to be said");
});

// Where the page did not see to it the game would by itself, and say so as a problem.
check("a text that never ends does not stop the game", async () => {
  const player = await visitor(withVoices());
  await player.page.evaluate(() => { window.synth.isHolding = true; });
  await player.start(BROWSER);
  await pastTheTitle(player);
  assert.deepEqual(player.problems, []);
});

check("texts that fail do not stop the game", async () => {
  const player = await visitor(async (page) => {
    await withVoices()(page);
    await page.evaluateOnNewDocument(() => {
      const wait = window.setTimeout;  // no patience but with failures
      window.setTimeout = (call, ms, ...rest) => (ms >= 10000 ? 0 : wait(call, ms, ...rest));
    });
  });
  await player.page.evaluate(() => { window.synth.fails = "synthesis-failed"; });
  await player.start(BROWSER);
  await pastTheTitle(player);
  await player.answers("ArrowUp", "Start Game.");
  await player.answers("Enter", "Select the track");
  await player.answers("Enter", "Enter the number of laps");
  assert.deepEqual(player.problems, []);
});

for (const [what, prepare] of [
  ["no voices", withVoices({ voices: [] })],
  ["no speech", (page) => page.evaluateOnNewDocument(() => { delete window.speechSynthesis; })],
]) {
  check(`where a browser has ${what} the player is asked for another voice`, async () => {
    const player = await visitor(prepare);
    await player.start(BROWSER);
    await player.hears("Your screen reader. Press Enter now");
    assert.ok(!(await player.heard()).some((said) => said.includes("your browser")));
  });
}
