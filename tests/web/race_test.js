// @ts-check
// A race by real keys, and what happens around it.
import assert from "node:assert/strict";
import { test } from "node:test";
import { atTheMenu, name, RACE_KEYS, stored, toTheGrid } from "./visit.js";

test("a race is driven by captions, and the browser asks before it is left", async () => {
  const player = await atTheMenu();
  await toTheGrid(player);
  await player.down(RACE_KEYS.gas);
  await player.answers(RACE_KEYS.up, "25");
  await player.down(RACE_KEYS.position);
  await player.hears(/^\d\d?$/);
  await player.up(RACE_KEYS.position);
  await player.page.evaluate(() => document.getElementById("track")?.blur());
  await player.hears("The window is in the background.");
  await player.page.focus("#track");
  await player.hears("The window is in front again.");
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
