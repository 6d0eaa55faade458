// @ts-check
// Who says the game's texts. Each voice tells of every text that it has said to its end.

/** @typedef {{text: string, voice: number, rate: number, volume: number}} Request */
/** @typedef {() => void} Done */

/**
 * @typedef {object} Voice
 * @property {string[]} names
 * @property {(request: Request, done: Done) => void} say behind what is still to be said
 * @property {() => void} silence forgets everything; what is forgotten is not told of
 */

const NORMAL_MS_A_CHARACTER = 70;

/** How fast the game wants it, as a factor. @param {number} rate */
export function pace(rate) {
  return 3 ** (rate / 10);
}

/** The browser's own voices. @implements {Voice} */
export class BrowserVoice {
  /** @param {SpeechSynthesisVoice[]} voices */
  constructor(voices) {
    this.voices = voices;
    this.names = voices.map((voice) => voice.name);
    /** @type {Set<SpeechSynthesisUtterance>} kept, for browsers forget those that nobody holds */
    this.waiting = new Set();
  }

  /** @returns {Promise<BrowserVoice | null>} null where the browser has no voice */
  static async find() {
    if (!("speechSynthesis" in window)) return null;
    for (let attempt = 0; attempt < 15; ++attempt) {
      const voices = speechSynthesis.getVoices();
      if (voices.length) return new BrowserVoice(inOrder(voices));
      await new Promise((resolve) => setTimeout(resolve, 100));
    }
    return null;
  }

  /** @param {Request} request @param {Done} done */
  say(request, done) {
    const utterance = new SpeechSynthesisUtterance(request.text);
    utterance.voice = this.voices[request.voice] ?? null;
    utterance.lang = utterance.voice?.lang ?? "en";
    utterance.rate = Math.min(10, Math.max(0.1, pace(request.rate)));
    utterance.volume = request.volume / 100;
    const wait = window.setTimeout(() => end(), 15000 + this.backlog() + longest(request));
    const end = () => {
      window.clearTimeout(wait);
      if (this.waiting.delete(utterance)) done();
    };
    utterance.onend = utterance.onerror = end;
    this.waiting.add(utterance);
    speechSynthesis.resume();
    speechSynthesis.speak(utterance);
  }

  backlog() {
    let ms = 0;
    for (const utterance of this.waiting) ms += 4 * NORMAL_MS_A_CHARACTER * utterance.text.length;
    return ms;
  }

  silence() {
    this.waiting.clear();
    speechSynthesis.cancel();
  }
}

/** @param {Request} request most milliseconds that it may take */
function longest(request) {
  return (4 * NORMAL_MS_A_CHARACTER * request.text.length) / pace(request.rate);
}

/** English first, the browser's own choice before others. @param {SpeechSynthesisVoice[]} voices */
export function inOrder(voices) {
  /** @param {SpeechSynthesisVoice} voice */
  const rank = (voice) => (voice.lang.startsWith("en") ? 0 : 2) + (voice.default ? 0 : 1);
  return [...voices].sort((one, other) => rank(one) - rank(other));
}

/**
 * eSpeak NG, which comes with the page. The game speaks with it by itself, through its own sound; what
 * the page says before is played here, a text at a time.
 * @implements {Voice}
 */
export class EmbeddedVoice {
  /**
   * @typedef {{name: string, identifier: string, language: string, priority: number}} SynthVoice
   * @param {Worker} worker
   * @param {{sampleRate: number, voices: SynthVoice[]}} offer
   */
  constructor(worker, { sampleRate, voices }) {
    this.worker = worker;
    this.sampleRate = sampleRate;
    this.voices = voices;
    /** @type {string[]} none of those that the page speaks with for the game */
    this.names = [];
    /** @type {AudioContext | null} */
    this.audio = null;
    /** @type {AudioBufferSourceNode | null} */
    this.playing = null;
    this.timer = 0;
    /** @type {{memory: SharedArrayBuffer, desk: number} | null} where the game orders */
    this.place = null;
  }

  /** @returns {Promise<EmbeddedVoice | null>} null where it cannot be had */
  static open() {
    return new Promise((resolve) => {
      const worker = new Worker("speaker.js", { type: "module" });
      worker.onmessage = ({ data }) => resolve(new EmbeddedVoice(worker, data));
      worker.onerror = () => resolve(null);
    });
  }

  /** @param {Request} request @param {Done} done */
  say(request, done) {
    this.silence();
    this.worker.onerror = done;
    this.worker.onmessage = ({ data }) => {
      if (!this.audio) return;
      const sound = this.audio.createBuffer(1, data.length, this.sampleRate);
      sound.copyToChannel(data, 0);
      this.playing = new AudioBufferSourceNode(this.audio, { buffer: sound });
      this.playing.connect(this.audio.destination);
      this.playing.start();
      // Where there is no sound device a sound never comes to its end.
      this.timer = window.setTimeout(done, sound.duration * 1000);
    };
    this.worker.postMessage({ text: request.text });
  }

  silence() {
    window.clearTimeout(this.timer);
    this.worker.onmessage = this.worker.onerror = null;
    this.playing?.stop();
    this.playing = null;
  }

  /** From now on the game orders. @param {SharedArrayBuffer} memory @param {number} desk where in it */
  serve(memory, desk) {
    this.place = { memory, desk };
    this.worker.onerror = () => void this.replaceWorker();
    this.worker.postMessage(this.place);
  }

  /** By one that goes on where the game's orders have got to. */
  async replaceWorker() {
    this.worker.terminate();
    const place = this.place;
    const other = await EmbeddedVoice.open();
    if (place && other && this.place === place) {
      this.worker = other.worker;
      this.serve(place.memory, place.desk);
    } else {
      other?.close();  // another one was quicker, or the game has ended
    }
  }

  close() {
    this.place = null;
    this.worker.terminate();
  }
}

/** The player's screen reader, which reads what appears in a live region. @implements {Voice} */
export class ReaderVoice {
  /**
   * @param {HTMLElement} region
   * @param {number} msACharacter how fast it reads
   */
  constructor(region, msACharacter) {
    this.region = region;
    this.msACharacter = msACharacter;
    this.names = ["Screen reader"];
    /** @type {{request: Request, done: Done}[]} */
    this.queue = [];
    this.timer = 0;
  }

  /** @param {Request} request @param {Done} done */
  say(request, done) {
    this.queue.push({ request, done });
    if (this.queue.length === 1) this.next();
  }

  next() {
    if (!this.queue.length) return;
    const { request, done } = this.queue[0];
    const line = document.createElement("p");
    line.textContent = request.text;
    if (request.text.trim() !== "") this.region.replaceChildren(line);
    this.timer = window.setTimeout(() => {
      this.queue.shift();
      done();
      this.next();
    }, Math.max(1, request.text.trim().length * this.msACharacter));
  }

  silence() {
    window.clearTimeout(this.timer);
    this.queue = [];
    this.region.replaceChildren();
  }
}
