// @ts-check
// A real browser with the game's page in it, and what a player does and hears there.
import { createReadStream, existsSync, readFileSync } from "node:fs";
import { createServer } from "node:http";
import { createRequire } from "node:module";
import { extname, join } from "node:path";
import { fileURLToPath, pathToFileURL } from "node:url";

const top = fileURLToPath(new URL("../../", import.meta.url));
export const site = join(top, "build/web/site");
const npm = createRequire(join(top, "build/web/npm/"));
export const axe = readFileSync(npm.resolve("axe-core/axe.min.js"), "utf8");
const puppeteer = (await import(pathToFileURL(npm.resolve("puppeteer-core")).href)).default;

const LONG = 90000;
const TYPES = { ".html": "text/html", ".js": "text/javascript", ".json": "application/json", ".wasm": "application/wasm", ".svg": "image/svg+xml" };

/** Any host that knows nothing of headers: the service worker has to do. */
export class Host {
  static async start() {
    const host = new Host();
    host.isDown = false;
    host.served = 0;  // bytes
    host.server = createServer((request, response) => {
      const path = join(site, new URL(request.url ?? "/", "http://host").pathname.replace(/\/$/, "/index.html"));
      if (host.isDown || !existsSync(path)) {
        response.writeHead(host.isDown ? 503 : 404).end();
        return;
      }
      response.writeHead(200, { "Content-Type": TYPES[extname(path)] ?? "application/octet-stream" });
      createReadStream(path).on("data", (bytes) => { host.served += bytes.length; }).pipe(response);
    });
    await new Promise((resolve) => host.server.listen(0, "127.0.0.1", () => resolve(undefined)));
    host.url = `http://localhost:${host.server.address().port}/`;
    return host;
  }
  stop() {
    this.server.closeAllConnections();
    this.server.close();
  }
}

/** @param {"chromium" | "firefox"} name */
export function launch(name) {
  const isFirefox = name === "firefox";
  return puppeteer.launch({
    browser: isFirefox ? "firefox" : "chrome",
    executablePath: isFirefox ? "/usr/bin/firefox-esr" : "/usr/bin/chromium",
    headless: true,
    timeout: 2 * LONG,  // until it is there
    protocolTimeout: 300000,
    args: isFirefox ? [] : ["--no-sandbox", "--autoplay-policy=user-gesture-required", "--disable-gpu"],
    extraPrefsFirefox: { "media.cubeb.sandbox": false, "media.autoplay.default": 0 },
  });
}

/** What the driver calls Enter is in Firefox that of the numeric pad. */
const MAIN_ENTER = "\uE006";
const isOfWebDriver = (page) => page.browser().protocol === "webDriverBiDi";

/** A person's moment between two keys. */
const MOMENT_MS = 350;

/** @param {number} ms @returns {Promise<void>} */
export const pass = (ms) => new Promise((resolve) => setTimeout(resolve, ms));

/** A player before the page, who goes by the captions; those that have been waited for lie behind. */
export class Player {
  /** What was begun last, for the word on a test that hangs. */
  static doing = "nothing";

  /** @param {import("puppeteer-core").Page} page */
  constructor(page) {
    this.page = page;
    this.behind = 0;
    /** @type {string[]} */
    this.problems = [];
    page.on("pageerror", (error) => this.problems.push(String(error)));
    page.on("console", (message) => {
      if (message.type() === "error") this.problems.push(message.text());
    });
  }

  /** Opens the page; every caption is noted from the first on. */
  static async open(browser, url, prepare = async (_page) => {}) {
    Player.doing = `open ${url}`;
    const player = new Player(await browser.newPage());
    player.page.setDefaultTimeout(LONG);
    await player.page.evaluateOnNewDocument(() => {
      window.heard = [];
      addEventListener("DOMContentLoaded", () => {
        new MutationObserver((changes) => {
          for (const change of changes) {
            for (const node of change.addedNodes) window.heard.push(node.textContent);
          }
        }).observe(document.getElementById("captions") ?? document.body, { childList: true });
      });
    });
    await prepare(player.page);
    await player.page.goto(url);
    await player.reads("Ready.");
    return player;
  }

  /** As a player does it: the driver's own way goes past the service worker. */
  async reload() {
    Player.doing = "reload";
    await this.page.evaluate(() => {
      document.getElementById("state")?.replaceChildren();
      setTimeout(() => location.reload());
    });
    await this.reads("Ready.");
    this.behind = 0;
  }
  /** Starts the game, its voice and keys chosen before. */
  async start({ voice = "reader 2", keys = "usual" } = {}) {
    await this.page.evaluate((chosen, way) => {
      localStorage.setItem("vorn1.voice", chosen);
      localStorage.setItem("vorn1.keys", way);
    }, voice, keys);
    await this.pressStart();
  }
  async pressStart() {
    await this.page.focus("#start");
    await this.press("Enter");
  }

  until(condition, ...values) {
    Player.doing = `wait for ${values[0]}`;
    return this.page.waitForFunction(condition, { timeout: LONG, polling: 50 }, ...values);
  }
  /** Waits until the page's own line begins with `text`. */
  reads(text) {
    return this.until((begin) => document.getElementById("state")?.textContent?.startsWith(begin), text);
  }
  async heard() {
    Player.doing = "ask what was heard";
    return this.page.evaluate(() => window.heard);
  }
  /** Passes over what has been said until now. */
  async skip() {
    this.behind = (await this.heard()).length;
  }
  /**
   * Waits for the next text that contains `part`, or that is like it.
   * @param {string | RegExp} part
   * @returns {Promise<string>} that text
   */
  async hears(part) {
    const like = part instanceof RegExp ? part.source : part.replace(/[.*+?^${}()|[\]\\]/g, "\\$&");
    try {
      const found = await this.until((pattern, behind) => {
        const at = window.heard.findIndex((said, i) => i >= behind && new RegExp(pattern).test(said));
        return at < 0 ? null : { at };
      }, like, this.behind);
      const { at } = await found.jsonValue();
      this.behind = at + 1;
      return (await this.heard())[at];
    } catch (error) {
      throw new Error(`"${part}" was not said, but: ${JSON.stringify((await this.heard()).slice(-12))}; ${this.problems}; ${error}`);
    }
  }

  /** The next text; null where none comes in time. @param {number} ms @returns {Promise<string | null>} */
  async hearsWithin(ms) {
    try {
      await this.page.waitForFunction((behind) => window.heard.length > behind, { timeout: ms, polling: 20 }, this.behind);
    } catch {
      return null;
    }
    return (await this.heard())[this.behind++];
  }

  /** @param {string} key as drivers call it */
  keyOf(key) {
    return isOfWebDriver(this.page) && key === "Enter" ? MAIN_ENTER : key;
  }
  press(key) {
    Player.doing = `press ${key}`;
    // Briefly: a menu moves on where a key is held for 200 ms, which a busy machine makes of less.
    return this.page.keyboard.press(this.keyOf(key), { delay: 20 });
  }
  async down(key) {
    Player.doing = `hold ${key}`;
    await this.page.keyboard.down(this.keyOf(key));
  }
  async up(key) {
    Player.doing = `let go of ${key}`;
    await this.page.keyboard.up(this.keyOf(key));
  }
  /**
   * Answers with a key, again where nothing comes of it: a menu takes none in its first moments.
   * @param {string} key
   * @param {string | RegExp} part of what is to be heard then
   * @param {number} patience milliseconds
   */
  async answers(key, part, patience = 20000) {
    for (let attempt = 0; attempt < 8; ++attempt) {
      await pass(MOMENT_MS);
      await this.skip();
      await this.press(key);
      if (await this.hearsWithin(patience) === null) continue;
      --this.behind;
      return this.hears(part);
    }
    throw new Error(`nothing was said to ${key}, where "${part}" should be; ${this.problems}`);
  }
}
