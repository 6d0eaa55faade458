// @ts-check
// The game in a real browser, played with real keys and heard by its captions.
//   BROWSER=chromium|firefox node --test game_test.js
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, afterEach, before, test } from "node:test";
import { axe, Host, launch, Player } from "./browser.js";

const name = process.env.BROWSER === "firefox" ? "firefox" : "chromium";
const program = process.env.VORN_PROGRAM ?? "", sounds = process.env.VORN_SOUNDS ?? "";
const MENU = " Select. Exit Game. ".trim();
const IN_A_RACE = { gas: "ControlLeft", position: "ControlRight", up: "ArrowUp", engine: "End" };

let host, browser, context;
before(async () => {
  host = await Host.start();
  browser = await launch(name);
});
after(async () => {
  await browser?.close();
  host?.stop();
});
afterEach(async () => {
  host.isDown = false;
  await context?.close();
});

/** A new visitor. */
async function visitor(prepare) {
  context = await browser.createBrowserContext();
  return Player.open(context, host.url, prepare);
}

async function atTheMenu(options, prepare) {
  const player = await visitor(prepare);
  await player.start(options);
  const count = await player.hears(MENU);
  return { player, count };
}

/** A controller that is there from the start. */
function withPad(page) {
  return page.evaluateOnNewDocument(() => {
    window.pad = {
      id: "Pad (STANDARD GAMEPAD Vendor: 045e Product: 028e)", index: 0, connected: true, mapping: "standard",
      axes: [0, 0, 0, 0], buttons: Array.from({ length: 17 }, () => ({ pressed: false, value: 0 })),
    };
    navigator.getGamepads = () => [window.pad];
  });
}

/** Files as the browser stores them, as text. */
function stored(player) {
  return player.page.evaluate(async () => {
    const { PlayerFiles } = await import("./store.js");
    const all = await (await PlayerFiles.open()).all();
    return Object.fromEntries([...all].map(([file, bytes]) => [file, new TextDecoder("windows-1252").decode(bytes)]));
  });
}

/** From the main menu into a race of one lap. */
async function toTheGrid(player, count) {
  await player.tap("ArrowUp");
  let at = await player.hears("Start Game.", count);
  await player.tap("Enter");
  at = await player.hears("Select the track", at);
  await player.tap("Enter");
  at = await player.hears("Enter the number of laps", at);
  await player.tap("1");
  await player.tap("Enter");
  at = await player.hears("correct for the number of laps", at);
  await player.tap("Enter");
  at = await player.hears("Start Your Engines", at);
  await player.page.keyboard.press(IN_A_RACE.engine, { delay: 200 });
  return at;
}

test("every entry of the main menu is reached, and the menu goes round", async () => {
  const { player, count } = await atTheMenu();
  const entries = [];
  for (let at = count; entries.length < 40;) {
    await player.tap("ArrowDown");
    at = await player.hears("", at);
    const entry = (await player.heard())[at - 1];
    if (entry === entries[0]) break;
    entries.push(entry);
  }
  assert.ok(entries.length >= 17 && entries.length < 40, String(entries));
  assert.ok(entries.includes("Start Game.") && entries.includes("Exit Game."), String(entries));
  assert.deepEqual(player.problems, []);
});

test("the game ends by its menu, and starts again", async () => {
  const { player, count } = await atTheMenu();
  await player.tap("Enter");
  await player.hears("Thank you for playing", count);
  await player.until(() => document.getElementById("state")?.textContent === "The game has ended.");
  const ended = (await player.heard()).length;
  await player.page.keyboard.press("Enter");
  await player.hears(MENU, ended);
});

test("the first visit asks for voice and keys, and keeps both", async () => {
  const player = await visitor();
  await player.page.focus("#start");
  await player.page.keyboard.press("Enter");
  await player.hears("Your screen reader. Press Enter now");
  await player.tap("Enter");
  await player.hears("has read this sentence to its end");
  await player.tap("Enter");
  await player.hears("Press A to drive with A");
  await player.tap("a");
  const at = await player.hears(MENU);
  assert.match((await stored(player))["vorn1key.cfg"], /^(\d+\r\n){10}30\r\n44\r\n/);
  assert.match(await player.page.evaluate(() => localStorage.getItem("vorn1.voice") ?? ""), /^reader \d/);
  await player.reload();
  await player.page.focus("#start");
  await player.page.keyboard.press("Enter");
  await player.hears(MENU);
  assert.ok(!(await player.heard()).some((said) => said.includes("Press ")), "asked again");
  assert.ok(at > 0);
});

test("what is chosen is there after a reload, also without a network", async () => {
  const { player, count } = await atTheMenu();
  let at = count;
  for (let i = 0; i < 3; ++i) {
    await player.tap("ArrowUp");
    at = await player.hears("", at);
  }
  await player.tap("Enter");
  at = await player.hears("wall sound", at);
  await player.tap("ArrowDown");
  at = await player.hears("", at);
  await player.tap("Enter");
  at = await player.hears("for the wall sound?", at);
  await player.tap("Enter");
  for (const option of ["automatic speedometer", "automatic gear", "pit road snacks", "track light"]) {
    at = await player.hears(option, at);
    await player.tap("Enter");
  }
  while (!("vorn1ops.cfg" in await stored(player))) await new Promise((resolve) => setTimeout(resolve, 100));
  const options = (await stored(player))["vorn1ops.cfg"];
  host.isDown = true;
  await player.reload();
  await player.start();
  await player.hears(MENU);
  assert.equal((await stored(player))["vorn1ops.cfg"], options);
});

// The driver of Firefox has no such reload.
test("a reload with Shift, which goes past the service worker, leads to the game", { skip: name === "firefox" }, async () => {
  const player = await visitor();
  const session = await player.page.createCDPSession();
  for (let i = 0; i < 2; ++i) {
    await player.page.evaluate(() => document.getElementById("state")?.replaceChildren());
    await session.send("Page.reload", { ignoreCache: true });
    await player.until(() => crossOriginIsolated && document.getElementById("state")?.textContent === "Ready.");
  }
});

test("a race is driven by captions, and the browser asks before it is left", async () => {
  const { player, count } = await atTheMenu();
  let at = await toTheGrid(player, count);
  await player.page.keyboard.down(IN_A_RACE.gas);
  at = await player.hears("1", await player.hears("2", await player.hears("3", at)));
  await new Promise((resolve) => setTimeout(resolve, 3000));  // the horn, which no caption tells of
  await player.tap(IN_A_RACE.up);
  at = await player.hears("25", at);
  await player.page.keyboard.down(IN_A_RACE.position);
  await player.until((begin) => window.heard.slice(begin).some((said) => /^\d+$/.test(said) && Number(said) <= 100), at);
  await player.page.keyboard.up(IN_A_RACE.position);
  at = (await player.heard()).length;
  await player.page.evaluate(() => document.getElementById("track")?.blur());
  at = await player.hears("The window is in the background.", at);
  await player.page.focus("#track");
  await player.hears("The window is in front again.", at);
  if (name === "chromium") {
    const asked = new Promise((resolve) => player.page.once("dialog", async (dialog) => {
      await dialog.dismiss();
      resolve(dialog.type());
    }));
    await player.page.close({ runBeforeUnload: true });
    assert.equal(await asked, "beforeunload");
  }
  player.page.on("dialog", (dialog) => void dialog.accept());
  await player.reload();
  for (const text of Object.values(await stored(player))) assert.doesNotMatch(text, /\0{16}/, "half written");
});

test("storage that is refused is told of, and the game goes on", async () => {
  const { player, count } = await atTheMenu({}, (page) => page.evaluateOnNewDocument(() => {
    IDBFactory.prototype.open = () => {
      throw new DOMException("refused", "SecurityError");
    };
  }));
  await player.tap("ArrowUp");
  let at = await player.hears("Start Game.", count);
  for (let i = 0; i < 2; ++i) {
    await player.tap("ArrowUp");
    at = await player.hears("", at);
  }
  await player.tap("Enter");
  at = await player.hears("wall sound", at);
  await player.tap("ArrowDown");
  at = await player.hears("", at);
  await player.tap("Enter");
  at = await player.hears("for the wall sound?", at);
  await player.tap("Enter");
  await player.hears("automatic speedometer", at);
  await player.hears("could not be saved");
  assert.deepEqual(await stored(player), {});
});

test("a game whose thread has been killed is told of, and can be started again", async () => {
  const { player } = await atTheMenu({}, (page) => page.evaluateOnNewDocument(() => {
    const made = [];
    window.Worker = class extends Worker {
      constructor(...args) {
        super(...args);
        made.push(this);
      }
    };
    window.killWorkers = () => made.forEach((worker) => worker.terminate());
  }));
  await player.page.evaluate(() => window.killWorkers());
  await player.until(() => document.getElementById("state")?.textContent?.startsWith("The game has stopped."));
  const before = (await player.heard()).length;
  await player.page.keyboard.press("Enter");
  await player.hears(MENU, before);
});

test("a gamepad of the standard mapping selects, and is missed when it is unplugged", async () => {
  const { player, count } = await atTheMenu({}, withPad);
  await player.page.evaluate(() => { window.pad.axes[1] = -1; });
  await player.page.evaluate(() => { window.pad.axes[1] = 0; });
  await player.tap("ArrowUp");
  let at = await player.hears("Start Game.", count);
  const press = (index, isDown) => player.page.evaluate((button, pressed) => {
    window.pad.buttons[button] = { pressed, value: Number(pressed) };
  }, index, isDown);
  await press(0, true);
  at = await player.hears("joystick", at);
  await press(0, false);
  await player.page.evaluate(() => {
    window.pad.connected = false;
    dispatchEvent(Object.assign(new Event("gamepaddisconnected"), { gamepad: window.pad }));
  });
  at = await player.hears("The controller is disconnected.", at);
  await player.page.evaluate(() => { window.pad.connected = true; });
  await player.hears("The controller is connected again.", at);
});

test("a second tab is not let in", async () => {
  const { player } = await atTheMenu();
  const other = await context.newPage();
  await other.goto(host.url);
  await other.waitForFunction(() => document.getElementById("state")?.textContent?.includes("another tab"), { timeout: 60000 });
  assert.equal(await other.$eval("#start", (button) => /** @type {HTMLButtonElement} */ (button).disabled), true);
  assert.deepEqual(player.problems, []);
});

test("records and settings go out and come back as a zip", async () => {
  const player = await visitor();
  const names = await player.page.evaluate(async () => {
    const { PlayerFiles } = await import("./store.js");
    const files = await PlayerFiles.open();
    await files.put("vorn1log.txt", new Uint8Array([65, 13, 10]));
    const zip = new Uint8Array(await (await files.exported()).arrayBuffer());
    await files.remove("vorn1log.txt");
    const count = await files.import(zip);
    return [count, [...(await files.all())].map(([file, bytes]) => file + ":" + [...bytes])];
  });
  assert.deepEqual(names, [1, ["vorn1log.txt:65,13,10"]]);
});

test("the page, the keys and the manual have no fault that axe finds", async () => {
  const player = await visitor();
  for (const paper of ["", "keys.html", "manual.html"]) {
    if (paper) await player.page.goto(host.url + paper);
    await player.page.evaluate(axe);
    const faults = await player.page.evaluate(async () => (await /** @type {any} */ (window).axe.run()).violations
      .map((fault) => `${fault.id}: ${fault.nodes.map((node) => node.html).join(" ")}`));
    assert.deepEqual(faults, [], paper);
  }
  await player.page.goto(host.url);
  await player.until(() => document.getElementById("state")?.textContent === "Ready.");
  await player.start();
  await player.hears(MENU);
  await player.page.evaluate(axe);
  const faults = await player.page.evaluate(async () => (await /** @type {any} */ (window).axe.run()).violations.map((fault) => fault.id));
  assert.deepEqual(faults, []);
});

// Firefox plays nothing where there is no sound device.
test("what reaches the worklet is what the headless session renders", { skip: name === "firefox" }, async () => {
  const { player } = await atTheMenu({}, (page) => page.evaluateOnNewDocument(() => {
    // A second reader of what the game's player puts out.
    const connect = AudioNode.prototype.connect;
    window.captured = [];
    AudioNode.prototype.connect = function (target, ...rest) {
      if (this instanceof AudioWorkletNode) {
        const tap = new ScriptProcessorNode2(this.context);
        connect.call(this, tap.node);
        connect.call(tap.node, this.context.destination);
      }
      return connect.call(this, target, ...rest);
    };
    class ScriptProcessorNode2 {
      constructor(audio) {
        this.node = audio.createScriptProcessor(4096, 2, 2);
        this.node.onaudioprocess = (event) => window.captured.push(...event.inputBuffer.getChannelData(0));
      }
    }
  }));
  const captured = Float32Array.from(await player.page.evaluate(() => window.captured));
  const rendered = renderedStart();
  const { correlation, seconds } = bestMatch(rendered, captured);
  assert.ok(correlation > 0.95, `correlation ${correlation} over ${seconds} s of ${captured.length / 48000}`);
});

/** The first seconds of a headless session, left side. */
function renderedStart() {
  const work = mkdtempSync(join(tmpdir(), "vorn1-web-"));
  const script = join(work, "script"), folder = join(work, "folder"), render = join(work, "mix.raw");
  execFileSync("sh", ["-c", `mkdir ${folder}; cp ${sounds}/*.wav ${folder}; printf 'wait 3000\\nend\\n' >${script}`]);
  try {
    execFileSync(program, ["--headless", "--script", script, "--render", render, "--folder", folder]);
    const raw = readFileSync(render);
    const samples = new Int16Array(raw.buffer, raw.byteOffset, raw.length / 2);
    return Float32Array.from({ length: samples.length / 2 }, (_, i) => samples[2 * i] / 32767);
  } finally {
    rmSync(work, { recursive: true });
  }
}

/** Where a second of `wanted` is in `heard`, and how alike they are there: 1 is the same but for loudness. */
function bestMatch(wanted, heard) {
  const LENGTH = 48000, COARSE = 16, FROM = 48000;
  const piece = wanted.subarray(FROM, FROM + LENGTH);
  const alike = (at, step) => {
    let both = 0, one = 0, other = 0;
    for (let i = 0; i < LENGTH; i += step) {
      const a = piece[i], b = heard[at + i];
      both += a * b;
      one += a * a;
      other += b * b;
    }
    return one && other ? both / Math.sqrt(one * other) : 0;
  };
  let best = { correlation: -1, at: 0 };
  for (let at = 0; at + LENGTH < heard.length; ++at) {
    const correlation = alike(at, COARSE);
    if (correlation > best.correlation) best = { correlation, at };
  }
  return { correlation: alike(best.at, 1), seconds: LENGTH / 48000 };
}
