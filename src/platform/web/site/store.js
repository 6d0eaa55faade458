// @ts-check
// What the page keeps and fetches: the player's files, the pack of sounds, small choices.
import { unzipSync, zipSync } from "./fflate.js";

/** @typedef {Map<string, Uint8Array>} Contents */

const DATABASE = "vorn1", FILES = "files";

/**
 * @template T
 * @param {IDBRequest<T>} request
 * @returns {Promise<T>}
 */
function answered(request) {
  return new Promise((resolve, reject) => {
    request.onsuccess = () => resolve(request.result);
    request.onerror = () => reject(request.error);
  });
}

/** The player's files in the browser's database; where that is refused nothing is kept. */
export class PlayerFiles {
  /** @param {IDBDatabase | null} database */
  constructor(database) {
    this.database = database;
  }

  static async open() {
    try {
      const request = indexedDB.open(DATABASE, 1);
      request.onupgradeneeded = () => request.result.createObjectStore(FILES);
      return new PlayerFiles(await answered(request));
    } catch {
      return new PlayerFiles(null);
    }
  }

  /** @returns {Promise<Contents>} */
  async all() {
    if (!this.database) return new Map();
    const store = this.database.transaction(FILES).objectStore(FILES);
    const [names, contents] = await Promise.all([answered(store.getAllKeys()), answered(store.getAll())]);
    return new Map(names.map((name, i) => [String(name), contents[i]]));
  }

  /**
   * Resolves once the change would survive a power cut; rejects where it is refused.
   * @param {(store: IDBObjectStore) => void} change
   * @returns {Promise<void>}
   */
  change(change) {
    return new Promise((resolve, reject) => {
      if (!this.database) throw new Error("no database");
      const transaction = this.database.transaction(FILES, "readwrite", { durability: "strict" });
      transaction.oncomplete = () => resolve();
      transaction.onabort = () => reject(transaction.error);
      change(transaction.objectStore(FILES));
    });
  }

  /** @param {string} name @param {Uint8Array} bytes */
  put(name, bytes) {
    return this.change((store) => store.put(bytes, name));
  }

  /** @param {string} name */
  remove(name) {
    return this.change((store) => store.delete(name));
  }

  /** @returns {Promise<Blob>} */
  async exported() {
    return new Blob([new Uint8Array(zipSync(Object.fromEntries(await this.all()), {}))], { type: "application/zip" });
  }

  /**
   * The zip's files take the place of those of the same name; all or none.
   * @param {Uint8Array} zip
   * @returns {Promise<number>} how many there were
   */
  async import(zip) {
    const files = Object.entries(unzipSync(zip, {})).filter(([name]) => /^vorn1[^/]*\.(cfg|rec|txt|ghost)$/i.test(name));
    await this.change((store) => files.forEach(([name, bytes]) => store.put(bytes, name)));
    return files.length;
  }
}

/**
 * The pack that vorn1-sounds writes: the length of an index, the index, and for each sound what
 * stands before its samples, the samples as FLAC of 16 bits, and what stands behind them.
 * @typedef {{name: string, rate: number, channels: number, bits: number, before: number, flac: number, after: number}} Packed
 */

/**
 * @param {ArrayBuffer} pack
 * @returns {Promise<Contents>} the sound files, byte for byte
 */
export async function unpackedSounds(pack) {
  const indexBytes = new DataView(pack).getUint32(0, true);
  /** @type {Packed[]} */
  const index = JSON.parse(new TextDecoder().decode(new Uint8Array(pack, 4, indexBytes)));
  let at = 4 + indexBytes;
  const parts = index.map((sound) => {
    const begin = at;
    at += sound.before + sound.flac + sound.after;
    return { sound, begin };
  });
  return new Map(await Promise.all(parts.map(async ({ sound, begin }) => {
    const flac = begin + sound.before, after = flac + sound.flac;
    const decoder = new OfflineAudioContext(sound.channels, 1, sound.rate);
    const decoded = await decoder.decodeAudioData(pack.slice(flac, after));
    const data = samplesOf(decoded, sound.bits);
    const file = new Uint8Array(sound.before + data.length + sound.after);
    file.set(new Uint8Array(pack, begin, sound.before));
    file.set(data, sound.before);
    file.set(new Uint8Array(pack, after, sound.after), sound.before + data.length);
    return /** @type {[string, Uint8Array]} */ ([sound.name, file]);
  })));
}

/**
 * @param {AudioBuffer} decoded
 * @param {number} bits 8 (unsigned) or 16
 */
function samplesOf(decoded, bits) {
  const channels = decoded.numberOfChannels, bytes = bits / 8;
  const data = new Uint8Array(decoded.length * channels * bytes);
  const view = new DataView(data.buffer);
  for (let channel = 0; channel < channels; ++channel) {
    const decodedSamples = decoded.getChannelData(channel), highest = scaleAbove(decodedSamples);
    decodedSamples.forEach((sample, frame) => {
      const value = Math.round(sample * (sample > 0 ? highest : 32768)), place = (frame * channels + channel) * bytes;
      if (bits === 8) view.setUint8(place, (value >> 8) + 128);
      else view.setInt16(place, value, true);
    });
  }
  return data;
}

/**
 * What 1 stands for above 0: browsers do not agree on it, but all samples were whole numbers.
 * @param {Float32Array} samples
 */
function scaleAbove(samples) {
  /** @param {number} value */
  const isWhole = (value) => Math.abs(value - Math.round(value)) < 0.01;
  return samples.every((sample) => sample <= 0 || isWhole(sample * 32768)) ? 32768 : 32767;
}

/** @param {string} name @returns {string | null} a choice that was kept */
export function kept(name) {
  try {
    return localStorage.getItem("vorn1." + name);
  } catch {
    return null;
  }
}

/** @param {string} name @param {string | null} value */
export function keep(name, value) {
  try {
    if (value === null) localStorage.removeItem("vorn1." + name);
    else localStorage.setItem("vorn1." + name, value);
  } catch {
    // It is asked again next time.
  }
}
