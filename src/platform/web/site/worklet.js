// @ts-check
// Empties the game's ring of sound. Its layout stands in page.h: `SoundRing`.

const READ = 0, WRITTEN = 1, GAPS = 2, MISSED = 3, HEADER_BYTES = 16;
const FRAMES = 4096;

class RingPlayer extends AudioWorkletProcessor {
  /** @param {{processorOptions: {memory: SharedArrayBuffer, ring: number}}} options */
  constructor(options) {
    super();
    const { memory, ring } = options.processorOptions;
    this.counts = new Int32Array(memory, ring, HEADER_BYTES / 4);
    this.samples = new Float32Array(memory, ring + HEADER_BYTES, 2 * FRAMES);
    this.hasBegun = this.wasPlaying = false;
  }

  /**
   * @param {Float32Array[][]} inputs
   * @param {Float32Array[][]} outputs
   */
  process(inputs, outputs) {
    const [left, right] = outputs[0];
    const read = Atomics.load(this.counts, READ);
    const ready = (Atomics.load(this.counts, WRITTEN) - read) >>> 0;
    const count = Math.min(ready, left.length);
    for (let i = 0; i < count; ++i) {
      const at = 2 * (((read >>> 0) + i) % FRAMES);
      left[i] = this.samples[at];
      right[i] = this.samples[at + 1];
    }
    if (count < left.length && this.hasBegun) {
      if (this.wasPlaying) Atomics.add(this.counts, GAPS, 1);
      Atomics.add(this.counts, MISSED, left.length - count);
    }
    this.wasPlaying = count === left.length;
    this.hasBegun ||= this.wasPlaying;
    Atomics.add(this.counts, READ, count);
    Atomics.notify(this.counts, READ);
    return true;
  }
}

registerProcessor("ring-player", RingPlayer);
