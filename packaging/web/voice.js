// Puts eSpeak NG, of its data only the English, into a folder: node voice.js FOLDER
import { readFileSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { dirname, join } from "node:path";
import { gzipSync } from "node:zlib";

const folder = process.argv[2];
const npm = createRequire(new URL("../../build/web/npm/", import.meta.url));
const from = dirname(npm.resolve("@echogarden/espeak-ng-emscripten"));
const library = readFileSync(join(from, "espeak-ng.js"), "utf8"), data = readFileSync(join(from, "espeak-ng.data"));

const ENGLISH = /\/(en_dict|intonations|phon\w+|lang\/gmw\/en[^/]*)$/;
/** How the library lists its files: the name of each and where it stands in the data. */
const LISTED = /\{files:\[(.*?)\],remote_package_size:\d+\}/;
const files = [...(library.match(LISTED)?.[1] ?? "").matchAll(/filename:"([^"]*)",start:(\d+),end:(\d+)/g)]
  .map(([, filename, start, end]) => ({ filename, bytes: data.subarray(Number(start), Number(end)) }))
  .filter(({ filename }) => ENGLISH.test(filename));
if (files.length < 6) throw new Error("the library lists its files in another way than it did");

let at = 0;
const kept = files.map(({ filename, bytes }) => ({ filename, start: at, end: at += bytes.length }));
writeFileSync(join(folder, "espeak-ng.js"),
  library.replace(LISTED, () => JSON.stringify({ files: kept, remote_package_size: at })));
writeFileSync(join(folder, "espeak-ng.pack"), gzipSync(Buffer.concat(files.map(({ bytes }) => bytes)), { level: 9 }));
writeFileSync(join(folder, "LICENSE.espeak-ng"), readFileSync(join(from, "COPYING")));
