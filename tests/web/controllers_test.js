// @ts-check
// Controllers as the browser tells of them.
import assert from "node:assert/strict";
import { pass } from "./browser.js";
import { atTheMenu, check, choose } from "./visit.js";

/** A controller that is there from the start. */
function withPad(page) {
  return page.evaluateOnNewDocument(() => {
    window.felt = [];
    window.pad = {
      id: "Pad (STANDARD GAMEPAD Vendor: 045e Product: 028e)", index: 0, connected: true, mapping: "standard",
      axes: [0, 0, 0, 0], buttons: Array.from({ length: 17 }, () => ({ pressed: false, value: 0 })),
      vibrationActuator: {
        playEffect: async (type, { duration, strongMagnitude, weakMagnitude }) => {
          window.felt.push([type, duration, strongMagnitude, weakMagnitude]);
          return "complete";
        },
      },
    };
    navigator.getGamepads = () => [window.pad];
  });
}

const BOTTOM = 0, RIGHT_SHOULDER = 5, START = 9;

/** @param {import("./browser.js").Player} player @param {number} button @param {boolean} isDown */
function press(player, button, isDown) {
  return player.page.evaluate((index, pressed) => {
    window.pad.buttons[index] = { pressed, value: Number(pressed) };
  }, button, isDown);
}

/** Where a stick stands. @param {import("./browser.js").Player} player */
function push(player, axis, value) {
  return player.page.evaluate((index, at) => { window.pad.axes[index] = at; }, axis, value);
}

/** From the main menu to where the controller has been chosen. @param {import("./browser.js").Player} player */
async function takeTheController(player) {
  await choose(player, "Start Game.");
  await press(player, BOTTOM, true);
  await player.hears("joystick");
  await press(player, BOTTOM, false);
}

check("a gamepad of the standard mapping selects, and is missed when it is unplugged", async () => {
  const player = await atTheMenu({}, withPad);
  await takeTheController(player);
  await player.page.evaluate(() => {
    window.pad.connected = false;
    dispatchEvent(Object.assign(new Event("gamepaddisconnected"), { gamepad: window.pad }));
  });
  await player.hears("The controller is disconnected.");
  await player.page.evaluate(() => { window.pad.connected = true; });
  await player.hears("The controller is connected again.");
});

check("a crash is felt in the hands that drive, unless the page is told otherwise", async () => {
  const player = await atTheMenu({}, async (page) => {
    await withPad(page);
    await page.evaluateOnNewDocument(() => {
      // How often the page has looked whether to rumble.
      const look = Storage.prototype.getItem;
      window.looks = 0;
      Storage.prototype.getItem = function (name) {
        window.looks += Number(name === "vorn1.rumble");
        return look.call(this, name);
      };
    });
  });
  await takeTheController(player);
  await player.answers("Enter", "Select the track");
  await player.answers("Enter", "Enter the number of laps");
  await player.answers("1", "1");
  await player.answers("Enter", "correct for the number of laps");
  await player.answers("Enter", "Start Your Engines");
  await pass(500);
  await press(player, START, true);
  await player.hears("10");
  await press(player, START, false);
  await player.hears(/^1$/);
  await pass(3000);  // the horn
  await player.page.click("#rumble");
  const looks = await player.page.evaluate(() => window.looks);
  await push(player, 1, -1);
  await press(player, RIGHT_SHOULDER, true);
  await player.hears("25");
  await press(player, RIGHT_SHOULDER, false);
  await push(player, 0, 1);
  await player.until((before) => window.looks > before, looks);
  assert.deepEqual(await player.page.evaluate(() => window.felt), []);
  await player.page.click("#rumble");
  for (let attempt = 0; attempt < 10 && !await isCrashFelt(player); ++attempt) await driveOn(player);
  assert.ok(await isCrashFelt(player), JSON.stringify(await player.page.evaluate(() => window.felt)));
  assert.deepEqual(player.problems, []);
});

function isCrashFelt(player) {
  const wait = player.page.waitForFunction(() => window.felt.some(([type, ms, heavy, light]) =>
    type === "dual-rumble" && ms === 900 && heavy === 1 && light === 1), { timeout: 6000 });
  return wait.then(() => true, () => false);
}

/** After a crash. */
async function driveOn(player) {
  await player.press(" ");
  for (const button of [START, RIGHT_SHOULDER]) {
    await pass(700);
    await press(player, button, true);
    await pass(300);
    await press(player, button, false);
  }
}
