// @ts-check
// The embedded voice in the page: asked for, kept, and heard in what the browser plays.
// Runs within with_desktop.sh: Firefox plays nothing where there is no sound device.
import assert from "node:assert/strict";
import { pass } from "./browser.js";
import { recognised } from "./recogniser.js";
import { recorded, recordedSince, withRecorder } from "./recorder.js";
import { check, host, MENU, pastTheTitle, visitor } from "./visit.js";

const RATE = 48000, QUIET = 1e-3;
const LONG_MS = 60000;

/** @param {Float32Array} sound @returns {number} how much of it is no silence, in seconds */
function secondsOfSound(sound) {
  const PIECE = RATE / 100;
  let pieces = 0;
  for (let at = 0; at + PIECE <= sound.length; at += PIECE) {
    pieces += Number(sound.subarray(at, at + PIECE).some((sample) => Math.abs(sample) > QUIET));
  }
  return pieces * PIECE / RATE;
}

/** Waits until nothing has been heard for half a second. @returns {Promise<Float32Array>} what was until then, since `from` */
async function untilSilence(player, from) {
  const STILL = RATE / 2;
  for (const end = performance.now() + LONG_MS; ; await pass(100)) {
    const sound = await recordedSince(player, from);
    if (sound.length > STILL && sound.subarray(-STILL).every((sample) => Math.abs(sample) <= QUIET)) return sound;
    assert.ok(performance.now() < end, "it is never silent");
  }
}

async function atTheMenuWith(voice, prepare = async (_page) => {}) {
  const player = await visitor(async (page) => {
    await withRecorder(page);
    await prepare(page);
  });
  await player.start({ voice });
  await pastTheTitle(player);
  await untilSilence(player, await recorded(player));
  return player;
}

check("the first visit offers the game's own voice, which is kept and needs no network", async () => {
  const player = await visitor();
  await player.pressStart();
  await player.hears("The voice of the game. Press Enter now");
  await player.answers("Enter", "Press A to drive with A");
  await player.answers("Enter", "");
  await pastTheTitle(player);
  assert.equal(await player.page.evaluate(() => localStorage.getItem("vorn1.voice")), "embedded");
  host.isDown = true;
  await player.reload();
  await player.pressStart();
  await pastTheTitle(player);
  assert.ok(!(await player.heard()).some((said) => said.includes("Press ")), "asked again");
  assert.equal(await player.answers("ArrowUp", ""), "Start Game.");
  await player.answers("ArrowDown", MENU.replace("Select. ", ""));
  assert.deepEqual(player.problems.filter((problem) => !problem.includes("503")), []);
});

check("what is said is heard and understood", async () => {
  const player = await atTheMenuWith("embedded");
  const sentences = ["start game", "exit game", "check speakers", "change voice"];
  /** @type {string[]} */
  const understood = [];
  // On a busy machine speech stumbles.
  for (let attempt = 0; attempt < 4 && understood.at(-1) !== "start game"; ++attempt) {
    const from = await recorded(player);
    await player.answers("ArrowUp", "Start Game.");
    const sound = await untilSilence(player, from);
    assert.ok(secondsOfSound(sound) > 0.3, `${secondsOfSound(sound)} s of sound`);
    understood.push(recognised(sound, RATE, sentences));
    const back = await recorded(player);
    await player.answers("ArrowDown", "Exit Game.");
    await untilSilence(player, back);
  }
  assert.equal(understood.at(-1), "start game", String(understood));
});

check("where a screen reader speaks, the same step makes no sound", async () => {
  const player = await atTheMenuWith("reader 2");
  const from = await recorded(player);
  await player.answers("ArrowUp", "Start Game.");
  await pass(1500);
  assert.ok(secondsOfSound(await recordedSince(player, from)) < 0.2);
});

check("the next entry cuts the one before short", async () => {
  const player = await atTheMenuWith("embedded");
  const from = await recorded(player), before = (await player.heard()).length;
  let entries = 0;
  for (let presses = 0; entries < 6; ++presses) {  // in its first moments a menu takes none
    assert.ok(presses < 60, `${entries} of ${presses} keys are answered`);
    await player.press(presses % 2 ? "ArrowDown" : "ArrowUp");
    entries = (await player.heard()).length - before;
  }
  const many = secondsOfSound(await untilSilence(player, from));
  const again = await recorded(player);
  await player.answers("ArrowUp", "");
  const one = secondsOfSound(await untilSilence(player, again));
  const told = `${many} s for ${entries} entries, ${one} s for one`;
  assert.ok(many > 0.1 && one > 0.3, told);
  assert.ok(many < 0.75 * entries * one, told);
});

check("the game waits for its last words", async () => {
  const player = await atTheMenuWith("embedded");
  const from = await recorded(player);
  await player.answers("Enter", "Thank you for playing");
  await player.reads("The game has ended.");
  const said = secondsOfSound(await recordedSince(player, from));
  assert.ok(said > 2, `${said} s of sound`);
  await player.press("Enter");
  await pastTheTitle(player);
});

/** The first worker of the voice dies in the middle of its first text; all of them are in `window.speakers`. */
function withMortalVoice(page) {
  return page.evaluateOnNewDocument(() => {
    const READ = 2;  // where the worker waits for room
    window.speakers = [];
    window.Worker = class extends Worker {
      constructor(address, options) {
        const isSpeaker = String(address).includes("speaker");
        const mortal = () => URL.createObjectURL(new Blob([`
          const wait = Atomics.wait;
          Atomics.wait = (memory, index, value) => {
            if (index === ${READ}) throw new Error("dies");
            return wait(memory, index, value);
          };
          await import("${new URL(String(address), location.href)}");`], { type: "text/javascript" }));
        super(isSpeaker && !window.speakers.length ? mortal() : address, options);
        if (isSpeaker) window.speakers.push(this);
      }
    };
  });
}

check("a voice that dies, and one that falls silent, are replaced", async () => {
  const player = await atTheMenuWith("embedded", withMortalVoice);
  const speakers = () => player.page.evaluate(() => window.speakers.length);
  const isHeard = async (key) => {
    const from = await recorded(player);
    await player.answers(key, "");
    return secondsOfSound(await untilSilence(player, from)) > 0.3;
  };
  await player.until(() => window.speakers.length === 2);
  assert.ok(await isHeard("ArrowUp"), "the second one");
  await player.page.evaluate(() => window.speakers.at(-1).terminate());
  for (let i = 0; i < 10 && await speakers() < 3; ++i) {
    await player.answers("ArrowDown", "");  // the game waits ten seconds for its sound
    await pass(12000);
  }
  assert.ok(await isHeard("ArrowUp") || await isHeard("ArrowUp"), `the third one of ${await speakers()}`);
}, { minutes: 8 });

/** In place of the voice's worker, where its true one lies at `at`, comes what `program` makes. @param {(at: string) => string} program */
function withVoice(program) {
  return (page) => page.evaluateOnNewDocument((made) => {
    const programOf = eval(made);
    window.Worker = class extends Worker {
      constructor(address, options) {
        const at = new URL(String(address), location.href).href;
        const other = () => URL.createObjectURL(new Blob([programOf(at)], { type: "text/javascript" }));
        super(at.includes("speaker") ? other() : address, options);
      }
    };
  }, String(program));
}

for (const [what, program] of /** @type {[string, () => string][]} */ ([
  ["that does not load", () => `import "./missing.js";`],
  ["that is never ready", () => ``],
])) {
  check(`in place of a voice ${what} the others are offered`, async () => {
    const player = await visitor(withVoice(program));
    await player.pressStart();
    await player.hears("Your screen reader. Press Enter now");
    assert.ok(!(await player.heard()).some((said) => said.includes("voice of the game")));
  });
}

check("behind a voice that dies while it offers itself the others are offered", async () => {
  const player = await visitor(withVoice((at) => `await import("${at}"); self.onmessage = () => { throw new Error("dies"); };`));
  await player.pressStart();
  await player.hears("The voice of the game. Press Enter now");
  await player.hears("Your screen reader. Press Enter now");
});
