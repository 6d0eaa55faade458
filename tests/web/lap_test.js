// @ts-check
// A whole race, driven by ear from the menu to the record, which is there after a reload.
import assert from "node:assert/strict";
import { driveALap } from "./driver.js";
import { check, choose, figures, pastTheTitle, stored, visitor } from "./visit.js";

check("a lap is driven by ear, its record is told, and the menu tells it after a reload", async () => {
  const player = await visitor();
  const result = await driveALap(player);
  const [, time] = result.match(/^Your time for 1 lap on the Kirtland Dirt Mile Oval Track is, (.*?) seconds/) ?? [];
  assert.ok(time, result);
  assert.match(result, /Which sets a new record!/);
  const { tickWaits, tickLateMs } = await figures(player);
  assert.ok(tickWaits > 100 && tickLateMs.p50 > 0 && tickLateMs.p50 <= tickLateMs.p99, JSON.stringify({ tickWaits, tickLateMs }));

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
}, { minutes: 20 });
