// @ts-check
// The page around the game: whom it lets in, how it comes back, and that everybody can read it.
import assert from "node:assert/strict";
import { axe } from "./browser.js";
import { anotherTab, atTheMenu, check, host, name, pastTheTitle, visitor, withKiller } from "./visit.js";

check("the first load is under 8 MB", async () => {
  const before = host.served;
  await visitor();
  const bytes = host.served - before;
  assert.ok(bytes > 1e6 && bytes < 8e6, `${bytes} bytes`);
});

// The driver of Firefox has no such reload.
check("a reload with Shift, which goes past the service worker, leads to the game", async () => {
  const player = await visitor();
  const session = await player.page.createCDPSession();
  for (let i = 0; i < 2; ++i) {
    await player.page.evaluate(() => document.getElementById("state")?.replaceChildren());
    await session.send("Page.reload", { ignoreCache: true });
    await player.until(() => crossOriginIsolated && document.getElementById("state")?.textContent === "Ready.");
  }
}, { skip: name === "firefox" });

check("a game whose thread has been killed is told of, and can be started again", async () => {
  const player = await atTheMenu({}, withKiller);
  await player.page.evaluate(() => window.killWorkers());
  await player.reads("The game has stopped.");
  await player.press("Enter");
  await pastTheTitle(player);
});

check("a game that is given up is cut off", async () => {
  const player = await atTheMenu({}, (page) => page.evaluateOnNewDocument(() => {
    window.threads = 0;
    window.Worker = class extends Worker {
      isCounted = false;
      constructor(address, options) {
        super(address, options);
        this.isCounted = String(address).includes("vorn1-page");
        window.threads += Number(this.isCounted);
      }
      terminate() {
        super.terminate();
        window.threads -= Number(this.isCounted);
        this.isCounted = false;
      }
    };
    const setInterval = window.setInterval;
    window.setInterval = (call, ms) => {
      // Between looks that follow at once no game has done anything.
      if (ms === 5000) window.giveUp = () => { for (let look = 0; look < 6; ++look) call(); };
      return setInterval(call, ms);
    };
  }));
  assert.ok(await player.page.evaluate(() => window.threads >= 2));
  await player.page.evaluate(() => window.giveUp());
  await player.reads("The game has stopped.");
  await player.until(() => window.threads === 0);
  await player.press("Enter");
  await pastTheTitle(player);
  assert.deepEqual(player.problems, []);
});

check("a second tab is not let in", async () => {
  const player = await atTheMenu();
  const other = await anotherTab();
  await other.goto(host.url);
  await other.waitForFunction(() => document.getElementById("state")?.textContent?.includes("another tab"), { timeout: 60000 });
  assert.equal(await other.$eval("#start", (button) => /** @type {HTMLButtonElement} */ (button).disabled), true);
  assert.deepEqual(player.problems, []);
});

/** What axe finds on the page as it stands. */
async function faults(page) {
  await page.evaluate(axe);
  return page.evaluate(async () => (await /** @type {any} */ (window).axe.run()).violations
    .map((fault) => `${fault.id}: ${fault.nodes.map((node) => node.html).join(" ")}`));
}

check("the page, the keys and the manual have no fault that axe finds", async () => {
  const player = await visitor();
  for (const paper of ["", "keys.html", "manual.html"]) {
    if (paper) await player.page.goto(host.url + paper);
    assert.deepEqual(await faults(player.page), [], paper);
  }
  await player.page.goto(host.url);
  await player.reads("Ready.");
  await player.start();
  await pastTheTitle(player);
  assert.deepEqual(await faults(player.page), [], "while the game is running");
});
