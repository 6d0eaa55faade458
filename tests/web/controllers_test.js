// @ts-check
// Controllers as the browser tells of them.
import { test } from "node:test";
import { atTheMenu, choose } from "./visit.js";

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

test("a gamepad of the standard mapping selects, and is missed when it is unplugged", async () => {
  const player = await atTheMenu({}, withPad);
  await choose(player, "Start Game.");
  const press = (index, isDown) => player.page.evaluate((button, pressed) => {
    window.pad.buttons[button] = { pressed, value: Number(pressed) };
  }, index, isDown);
  await press(0, true);
  await player.hears("joystick");
  await press(0, false);
  await player.page.evaluate(() => {
    window.pad.connected = false;
    dispatchEvent(Object.assign(new Event("gamepaddisconnected"), { gamepad: window.pad }));
  });
  await player.hears("The controller is disconnected.");
  await player.page.evaluate(() => { window.pad.connected = true; });
  await player.hears("The controller is connected again.");
});
