// @ts-check
// What the browser keeps for the player: over a reload, without a network, as a zip, and where it refuses.
import assert from "node:assert/strict";
import { pass } from "./browser.js";
import { atTheMenu, check, choose, host, pastTheTitle, stored, visitor } from "./visit.js";

/**
 * From the main menu through all game options and back, the first one changed.
 * @param {Player} player
 * @param {() => Promise<boolean>} isBack
 */
async function changeOptions(player, isBack) {
  await choose(player, "change game options");
  await player.answers("Enter", "wall sound");
  await player.answers("ArrowDown", "nature");
  await player.answers("Enter", "for the wall sound?");
  for (const option of ["automatic speedometer", "automatic gear", "pit road snacks", "track light"]) {
    await player.answers("Enter", option);
  }
  // There is a moment in which no key is taken, and nothing is said from which to see that one was.
  for (let lost = 0; !await isBack(); ++lost) {
    if (lost % 50 === 10) await player.press("Enter");
    await pass(100);
  }
}

check("what is chosen is there after a reload, also without a network", async () => {
  const player = await atTheMenu();
  await changeOptions(player, async () => "vorn1ops.cfg" in await stored(player));
  const options = (await stored(player))["vorn1ops.cfg"];
  host.isDown = true;
  await player.reload();
  await player.start();
  await pastTheTitle(player);
  assert.equal((await stored(player))["vorn1ops.cfg"], options);
});

check("storage that is refused is told of, and the game goes on", async () => {
  const player = await atTheMenu({}, (page) => page.evaluateOnNewDocument(() => {
    IDBFactory.prototype.open = () => {
      throw new DOMException("refused", "SecurityError");
    };
  }));
  await changeOptions(player, async () => (await player.heard()).some((said) => said.includes("settings could not be saved")));
  await player.hears("settings could not be saved");
  await player.answers("ArrowDown", "change car engine sound");
  assert.deepEqual(await stored(player), {});
});

check("records and settings go out and come back as a zip", async () => {
  const player = await visitor();
  const names = await player.page.evaluate(async () => {
    const { PlayerFiles } = await import("./store.js");
    const files = await PlayerFiles.open();
    await files.put("vorn1log.txt", new Uint8Array([65, 13, 10]));
    const zip = new Uint8Array(await (await files.exported()).arrayBuffer());
    await files.remove("vorn1log.txt");
    const count = await files.import(zip);
    return [count, [...(await files.all())].map(([file, bytes]) => file + ":" + [...bytes])];
  });
  assert.deepEqual(names, [1, ["vorn1log.txt:65,13,10"]]);
});
