// @ts-check
// A race by real keys, and what happens around it.
import assert from "node:assert/strict";
import { anotherTab, atTheMenu, check, name, RACE_KEYS, stored, toTheGrid } from "./visit.js";

check("a race is driven by captions, and the browser asks before it is left", async () => {
  const player = await atTheMenu();
  await toTheGrid(player);
  await player.down(RACE_KEYS.gas);
  await player.answers(RACE_KEYS.up, "25");
  await player.down(RACE_KEYS.position);
  await player.hears(/^\d\d?$/);
  await player.up(RACE_KEYS.position);
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
  const files = Object.values(await stored(player));
  assert.ok(files.length > 0);
  for (const text of files) assert.doesNotMatch(text, /\0{16}/, "half written");
});

check("Tab leaves the keys with the game, and whoever leaves the page hears of it", async () => {
  const player = await atTheMenu();
  await toTheGrid(player);
  await player.down(RACE_KEYS.gas);
  await player.answers(RACE_KEYS.up, "25");
  await player.up(RACE_KEYS.gas);  // Control and Tab would lead to another tab
  await player.press("Tab");
  await player.until(() => document.activeElement?.id !== "track");
  await player.skip();
  await player.down(RACE_KEYS.position);
  await player.hears(/^\d\d?$/);
  await player.up(RACE_KEYS.position);
  const other = await anotherTab();
  await other.bringToFront();
  await player.hears("The window is in the background.");
  await player.page.bringToFront();
  await player.hears("The window is in front again.");
  const told = (await player.heard()).filter((said) => said === "The window is in the background.");
  assert.equal(told.length, 1, "Tab, too, was taken for the background");
});
