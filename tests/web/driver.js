// @ts-check
// A lap driven by ear.
import { pass } from "./browser.js";
import { pastTheTitle, RACE_KEYS, store, toTheGrid } from "./visit.js";

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

/**
 * From the start button to the result of the shortest of races.
 * @param {import("./browser.js").Player} player who has not started yet
 * @param {() => Promise<void>} begun called when the horn has sounded
 * @returns {Promise<string>} the result as it is told
 */
export async function driveALap(player, begun = async () => {}) {
  await store(player, "vorn1ops.cfg", OPTIONS);
  await player.start();
  await pastTheTitle(player);
  await toTheGrid(player, "Kirtland");
  await begun();
  await player.down(RACE_KEYS.gas);
  await player.answers(RACE_KEYS.up, /^1$/);
  await player.answers(RACE_KEYS.up, /^2$/);
  const result = await new Driver(player).driveToTheEnd();
  await player.up(RACE_KEYS.gas);
  return result;
}
