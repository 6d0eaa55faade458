// @ts-check
// Menus by real keys, heard by their captions, and what a first visit asks.
import assert from "node:assert/strict";
import { atTheMenu, check, MENU, pastTheTitle, stored, visitor } from "./visit.js";

check("every entry of the main menu is reached, and the menu goes round", async () => {
  const player = await atTheMenu();
  const entries = [];
  while (entries.length < 40) {
    const entry = await player.answers("ArrowDown", "");
    if (entry === entries[0]) break;
    entries.push(entry);
  }
  assert.ok(entries.length >= 17 && entries.length < 40, String(entries));
  assert.ok(entries.includes("Start Game.") && entries.includes("Exit Game."), String(entries));
  assert.deepEqual(player.problems, []);
});

check("the game ends by its menu, and starts again", async () => {
  const player = await atTheMenu();
  await player.answers("Enter", "Thank you for playing");
  await player.reads("The game has ended.");
  await player.press("Enter");
  await pastTheTitle(player);
});

check("the first visit asks for voice and keys, and keeps both", async () => {
  const player = await visitor();
  await player.pressStart();
  await player.hears("Your screen reader. Press Enter now");
  await player.answers("Enter", "has read this sentence to its end");
  await player.answers("Enter", "Press A to drive with A");
  await player.press("a");
  await player.hears(MENU);
  assert.match((await stored(player))["vorn1key.cfg"], /^(\d+\r\n){10}30\r\n44\r\n/);
  assert.match(await player.page.evaluate(() => localStorage.getItem("vorn1.voice") ?? ""), /^reader \d/);
  await player.reload();
  await player.pressStart();
  await player.hears(MENU);
  assert.ok(!(await player.heard()).some((said) => said.includes("Press ")), "asked again");
});
