// @ts-check
// What the tests of a file share: a host, the browser that BROWSER names, and a new visitor for each test.
import { after, afterEach, before, test } from "node:test";
import { Host, launch, pass, Player } from "./browser.js";

export const name = process.env.BROWSER === "firefox" ? "firefox" : "chromium";
export const MENU = "Select. Exit Game.";
export const RACE_KEYS = {
  gas: "ControlLeft", position: "ControlRight", up: "ArrowUp", left: "ArrowLeft", right: "ArrowRight", engine: "End", anything: " ",
};

/** @type {Host} */
export let host;
let browser, context;
before(async () => {
  host = await Host.start();
  browser = await launch(name);
});
after(async () => {
  await soon(browser?.close());
  browser?.process()?.kill("SIGKILL");  // where it did not go by itself
  host?.stop();
});
afterEach(async () => {
  host.isDown = false;
  await soon(context?.close());
});

/** A browser may hang with a page that did. @param {Promise<void> | undefined} end */
async function soon(end) {
  await Promise.race([end, pass(30000)]);
}

/**
 * A test, which fails with the word on what it was doing where it comes to no end.
 * @param {string} name
 * @param {() => Promise<void>} body
 * @param {{skip?: boolean, minutes?: number}} options `minutes`: what it may take on a busy machine
 */
export function check(name, body, { skip = false, minutes = 6 } = {}) {
  test(name, { skip }, async () => {
    let timer;
    const hung = new Promise((_, reject) => {
      timer = setTimeout(() => reject(new Error(`no end in ${minutes} minutes; begun last: ${Player.doing}`)), 60000 * minutes);
    });
    try {
      await Promise.race([body(), hung]);
    } finally {
      clearTimeout(timer);
    }
  });
}

/** Who has never been here. */
export async function visitor(prepare) {
  context = await browser.createBrowserContext();
  return Player.open(context, host.url, prepare);
}

/** @returns {Promise<import("puppeteer-core").Page>} in the browser of the last visitor */
export function anotherTab() {
  return context.newPage();
}

/** Cuts the title short and waits for the menu. @param {Player} player */
export async function pastTheTitle(player) {
  let isThere = false;
  const menu = player.hears(MENU).finally(() => { isThere = true; });
  while (!isThere) {
    await player.press(" ");
    await Promise.race([menu, pass(500)]);
  }
  await menu;
}

export async function atTheMenu(options, prepare) {
  const player = await visitor(prepare);
  await player.start(options);
  await pastTheTitle(player);
  return player;
}

/** From the main menu to an entry near its end: " Start Game. " is the last one. @param {Player} player */
export async function choose(player, entry) {
  for (let i = 0; i < 20; ++i) {
    if ((await player.answers("ArrowUp", "")).includes(entry)) return;
  }
  throw new Error(`no entry "${entry}"`);
}

/** From the main menu to a race of one lap, whose horn has sounded. @param {Player} player @param {string} track part of its name */
export async function toTheGrid(player, track = "Maple") {
  await choose(player, "Start Game.");
  let entry = await player.answers("Enter", "Select the track");
  for (let i = 0; i < 12 && !entry.includes(track); ++i) entry = await player.answers("ArrowDown", "");
  await player.answers("Enter", "Enter the number of laps");
  await player.answers("1", "1");
  await player.answers("Enter", "correct for the number of laps");
  await player.answers("Enter", "Start Your Engines");
  await player.answers(RACE_KEYS.engine, "10");
  await player.hears(/^1$/);
  await pass(3000);  // the horn, which no caption tells of
}

/** Files as the browser stores them, as text. @param {Player} player @returns {Promise<Record<string, string>>} */
export function stored(player) {
  return player.page.evaluate(async () => {
    const { PlayerFiles } = await import("./store.js");
    const all = await (await PlayerFiles.open()).all();
    return Object.fromEntries([...all].map(([file, bytes]) => [file, new TextDecoder("windows-1252").decode(bytes)]));
  });
}

/** @param {Player} player @param {string} file @param {string} text */
export function store(player, file, text) {
  return player.page.evaluate(async (to, what) => {
    const { PlayerFiles } = await import("./store.js");
    await (await PlayerFiles.open()).put(to, new TextEncoder().encode(what));
  }, file, text);
}

/** Lets a test end all threads of the game: `window.killWorkers()`. */
export function withKiller(page) {
  return page.evaluateOnNewDocument(() => {
    const made = [];
    window.Worker = class extends Worker {
      constructor(...args) {
        super(...args);
        made.push(this);
      }
    };
    window.killWorkers = () => made.forEach((worker) => worker.terminate());
  });
}

/** How the game keeps up, see docs/porting.md. @param {Player} player */
export function figures(player) {
  return player.page.evaluate(() => /** @type {any} */ (window).vornFigures());
}
