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
    host.server = createServer((request, response) => {
      const path = join(site, new URL(request.url ?? "/", "http://host").pathname.replace(/\/$/, "/index.html"));
      if (host.isDown || !existsSync(path)) {
        response.writeHead(host.isDown ? 503 : 404).end();
        return;
      }
      response.writeHead(200, { "Content-Type": TYPES[extname(path)] ?? "application/octet-stream" });
      createReadStream(path).pipe(response);
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
    protocolTimeout: 300000,
    args: isFirefox ? [] : ["--no-sandbox", "--autoplay-policy=user-gesture-required", "--disable-gpu"],
    extraPrefsFirefox: { "media.cubeb.sandbox": false, "media.autoplay.default": 0 },
  });
}

/** What the driver calls Enter is in Firefox that of the numeric pad. */
const MAIN_ENTER = "\uE006";
const isOfWebDriver = (page) => page.browser().protocol === "webDriverBiDi";

/** A player before the page. */
export class Player {
  /** @param {import("puppeteer-core").Page} page */
  constructor(page) {
    this.page = page;
    /** @type {string[]} */
    this.problems = [];
    page.on("pageerror", (error) => this.problems.push(String(error)));
    page.on("console", (message) => {
      if (message.type() === "error") this.problems.push(message.text());
    });
  }

  /** Opens the page; every caption is noted from the first on. */
  static async open(browser, url, prepare = async (_page) => {}) {
    const player = new Player(await browser.newPage());
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
    await player.until(() => document.getElementById("state")?.textContent === "Ready.");
    return player;
  }

  /** As a player does it: the driver's own way goes past the service worker. */
  async reload() {
    await this.page.evaluate(() => {
      document.getElementById("state")?.replaceChildren();
      setTimeout(() => location.reload());
    });
    await this.until(() => document.getElementById("state")?.textContent === "Ready.");
  }
  until(condition, ...values) {
    return this.page.waitForFunction(condition, { timeout: LONG, polling: 50 }, ...values);
  }
  async heard() {
    return this.page.evaluate(() => window.heard);
  }
  /** Waits until a text that contains `text` has been said after the first `from`. Returns how many texts there were. */
  async hears(text, from = 0) {
    try {
      const found = await this.until((wanted, begin) => {
        const at = window.heard.findIndex((said, i) => i >= begin && said.includes(wanted));
        return at < 0 ? 0 : at + 1;
      }, text, from);
      return Number(await found.jsonValue());
    } catch (error) {
      throw new Error(`"${text}" was not said, but: ${JSON.stringify((await this.heard()).slice(-12))}; ${this.problems}; ${error}`);
    }
  }
  /** Presses and lets go, not at once: a menu takes no key in the first half second. */
  async tap(key) {
    await new Promise((resolve) => setTimeout(resolve, 700));
    await this.page.keyboard.press(isOfWebDriver(this.page) && key === "Enter" ? MAIN_ENTER : key, { delay: 60 });
  }
  async says() {
    return this.page.$eval("#state", (node) => node.textContent);
  }
  /** Starts the game, its voice and keys chosen before. */
  async start({ voice = "reader 2", keys = "usual" } = {}) {
    await this.page.evaluate((chosen, way) => {
      localStorage.setItem("vorn1.voice", chosen);
      localStorage.setItem("vorn1.keys", way);
    }, voice, keys);
    await this.page.focus("#start");
    await this.page.keyboard.press("Enter");
  }
}
