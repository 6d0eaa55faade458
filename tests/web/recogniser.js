// @ts-check
// Which sentence a speech recogniser hears in samples.
import { execFileSync } from "node:child_process";
import { mkdtempSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";

/**
 * @param {Float32Array} samples one side
 * @param {number} rate
 * @param {string[]} sentences of which one may have been said
 * @returns {string} that one; blank where none is heard
 */
export function recognised(samples, rate, sentences) {
  const folder = mkdtempSync(join(tmpdir(), "vorn1-recogniser-"));
  const raw = join(folder, "said.raw"), wav = join(folder, "said.wav"), grammar = join(folder, "said.jsgf");
  try {
    writeFileSync(raw, new Uint8Array(samples.buffer, samples.byteOffset, samples.byteLength));
    writeFileSync(grammar, `#JSGF V1.0;\ngrammar said;\npublic <said> = ${sentences.join(" | ")};\n`);
    execFileSync("sox", ["-t", "raw", "-r", String(rate), "-c", "1", "-e", "float", "-b", "32", raw, "-r", "16000", "-b", "16", wav,
      "norm", "-6", "pad", "0.3", "0.4"]);
    return execFileSync("pocketsphinx_continuous", ["-infile", wav, "-jsgf", grammar, "-beam", "1e-80", "-wbeam", "1e-60",
      "-pbeam", "1e-80", "-logfn", "/dev/null"], { encoding: "utf8" }).trim();
  } finally {
    rmSync(folder, { recursive: true });
  }
}
