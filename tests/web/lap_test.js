// @ts-check
// A whole race, driven by ear from the menu to the record, which is there after a reload.
import assert from "node:assert/strict";
import { test } from "node:test";
import { pass } from "./browser.js";
import { atTheMenu, choose, pastTheTitle, RACE_KEYS, store, stored, toTheGrid, visitor } from "./visit.js";

/** No marks of speed, so that every number heard behind the gears is a position. */
const OPTIONS = "1\r\n2\r\n1\r\n1\r\n2\r\n1\r\n";
/** Every turn pushes to the right, so the middle that is aimed at lies left of the middle. */
const AIM = 42, NEAR_ENOUGH = 3, LOOK_AHEAD = 0.7;

/** Keeps the car on the road by its spoken positions alone. */
class Driver {
  /** @param {import("./browser.js").Player} player */
  constructor(player) {
    this.player = player;
    this.held = "";
    this.last = 50;
  }
  /** @returns {Promise<string>} the result as it is told */
  async driveToTheEnd() {
    await this.player.down(RACE_KEYS.position);  // held, it is answered again and again
    let text;
    do {
      text = await this.player.hearsWithin(6000);
      if (text === null) await this.restart();
      else if (/^\d+$/.test(text)) await this.steer(Number(text));
    } while (!text?.startsWith("Your time"));
    await this.hold("");
    await this.player.up(RACE_KEYS.position);
    return text;
  }
  /** @param {number} position */
  async steer(position) {
    const expected = position + LOOK_AHEAD * (position - this.last) - AIM;
    this.last = position;
    await this.hold(expected > NEAR_ENOUGH ? RACE_KEYS.left : expected < -NEAR_ENOUGH ? RACE_KEYS.right : "");
  }
  /** After a crash the position is no longer answered. */
  async restart() {
    await this.hold("");
    await this.player.up(RACE_KEYS.position);
    for (const key of [RACE_KEYS.anything, RACE_KEYS.engine]) {
      await this.player.press(key);
      await pass(1000);
    }
    await this.player.answers(RACE_KEYS.up, /^\d$/);
    await this.player.down(RACE_KEYS.position);
    this.last = 50;
  }
  /** @param {string} key */
  async hold(key) {
    if (key === this.held) return;
    if (this.held) await this.player.up(this.held);
    if (key) await this.player.down(key);
    this.held = key;
  }
}

test("a lap is driven by ear, its record is told, and the menu tells it after a reload", { timeout: 1200000 }, async () => {
  const player = await visitor();
  await store(player, "vorn1ops.cfg", OPTIONS);
  await player.start();
  await pastTheTitle(player);
  await toTheGrid(player, "Kirtland");  // whose lap is the shortest
  await player.down(RACE_KEYS.gas);
  await player.answers(RACE_KEYS.up, /^1$/);
  await player.answers(RACE_KEYS.up, /^2$/);
  const driver = new Driver(player);
  const result = await driver.driveToTheEnd();
  await player.up(RACE_KEYS.gas);
  const [, time] = result.match(/^Your time for 1 lap on the Kirtland Dirt Mile Oval Track is, (.*?) seconds/) ?? [];
  assert.ok(time, result);
  assert.match(result, /Which sets a new record!/);

  await player.hears("Enter your name as the new record holder.");
  await player.answers("q", "q");
  await player.answers("Enter", "Is q correct, for the new record holder? yes");
  await player.answers("Enter", "Select, repeat race time");
  const files = await stored(player);
  const recordFile = Object.keys(files).find((name) => /^vorn1kirtland.*\.rec$/.test(name)) ?? "";
  assert.match(files["vorn1records.txt"], /By q\r\n/);

  await player.reload();
  assert.equal((await stored(player))[recordFile], files[recordFile]);
  await player.start();
  await pastTheTitle(player);
  await choose(player, "reed records file");
  await player.answers("Enter", "The record for 1 lap on the Kirtland Dirt Mile Oval Track is");
  await player.hears(time);
  await player.hears("By q");
  assert.deepEqual(player.problems, []);
});
