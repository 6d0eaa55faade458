// @ts-check
// The page around the game: it hands over files and sounds, passes keys and controllers
// on, and makes heard and read what the game says. It knows no rule of the race.
import { keep, kept, PlayerFiles, unpackedSounds } from "./store.js";
import { BrowserVoice, EmbeddedVoice, ReaderVoice } from "./voices.js";

/** @typedef {import("./voices.js").Voice} Voice */

/** What the game tells; the numbers are those of `Tell` in page.h. */
const CAPTION = 0, SPOKEN = 1, SAY = 2, SILENCE = 3, BOX = 4, STORE = 5, REMOVE = 6, ENDED = 7, DIAGNOSIS = 8, RUMBLE = 9,
  VOICE_LOST = 10;

const CAPTION_LINES = 4;
const PAD_EVERY_MS = 8;
const PULSE_EVERY_MS = 5000, PULSES_MISSED = 4;
const LATENESS_EVERY_MS = 2000;
const DEFAULT_MS_A_CHARACTER = 60;
const VOICE_LOADS_MS = 20000;

/**
 * @typedef {object} Game what the compiled game offers
 * @property {(args: string[]) => void} callMain
 * @property {(name: string, result: string | null, types: string[], values: unknown[]) => number} ccall
 * @property {Uint8Array} HEAPU8
 * @property {Float64Array} HEAPF64
 * @property {WebAssembly.Memory} wasmMemory
 * @property {{terminateAllThreads: () => void}} PThread
 * @property {(size: number) => number} _malloc
 * @property {(address: number) => void} _free
 * @property {() => number} _vorn_ring
 * @property {(ms: number) => void} _vorn_device_late
 * @property {() => number} _vorn_tick_waits
 * @property {(share: number) => number} _vorn_ticks_late
 * @property {() => number} _vorn_gaps
 * @property {() => number} _vorn_frames_missed
 * @property {() => number} _vorn_frames_ahead
 * @property {(sampleRate: number) => number} _vorn_give_synth
 * @property {() => number} _vorn_is_racing
 * @property {() => number} _vorn_pulse
 * @property {(hasFocus: number) => void} _vorn_focus
 * @property {() => void} _vorn_answered
 * @property {(request: number) => void} _vorn_said
 * @property {(request: number, isStored: number) => void} _vorn_stored
 * @property {(index: number) => void} _vorn_pad_gone
 */

/** @param {string} id */
const element = (id) => /** @type {HTMLElement} */ (document.getElementById(id));
const start = /** @type {HTMLButtonElement} */ (element("start"));
const track = element("track"), captions = element("captions"), state = element("state");
const decoder = new TextDecoder();

/** @type {PlayerFiles} */
let files;
/** @type {Promise<Map<string, Uint8Array>>} */
let sounds;
/** @type {Promise<EmbeddedVoice | null> | null} */
let embedded = null;
/** @type {Game | null} */
let game = null;

/** @param {string} text */
function tell(text) {
  state.textContent = text;
}

/** @param {string} text */
function showCaption(text) {
  const line = document.createElement("p");
  line.textContent = text.trim();
  captions.append(line);
  while (captions.children.length > CAPTION_LINES) captions.firstElementChild?.remove();
}

/** @param {number} ms @returns {Promise<void>} */
const pass = (ms) => new Promise((resolve) => window.setTimeout(resolve, ms));

/**
 * The next key that is pressed in the play area, of those that are asked for; null when the time is over.
 * @param {string[]} codes
 * @param {number} ms
 * @returns {Promise<string | null>}
 */
function keyOf(codes, ms) {
  return new Promise((resolve) => {
    /** @param {string | null} code */
    const end = (code) => {
      track.removeEventListener("keydown", listen);
      window.clearTimeout(timer);
      resolve(code);
    };
    /** @param {KeyboardEvent} event */
    const listen = (event) => {
      const code = event.code === "NumpadEnter" ? "Enter" : event.code;
      if (event.repeat || !codes.includes(code)) return;
      event.preventDefault();
      end(code);
    };
    const timer = window.setTimeout(() => end(null), ms);
    track.addEventListener("keydown", listen);
  });
}

/** Says a text of the page's own. @param {Voice} voice @param {string} text @returns {Promise<void>} */
function said(voice, text) {
  showCaption(text);
  return new Promise((resolve) => voice.say({ text, voice: 0, rate: 0, volume: 100 }, resolve));
}

/**
 * @param {Voice} voice
 * @param {string} text
 * @param {string[]} codes keys that answer it
 * @param {number} ms how long after its end an answer counts
 * @returns {Promise<string | null>}
 */
async function asked(voice, text, codes, ms) {
  const answer = keyOf(codes, 600000);
  const silent = said(voice, text).then(() => pass(ms)).then(() => null);
  const key = await Promise.race([answer, silent]);
  voice.silence();
  return key;
}

/** @param {number} msACharacter */
const reader = (msACharacter) => new ReaderVoice(element("reader"), msACharacter);

/** Browsers halt sound by themselves, and some take it up again only at a key. @param {AudioContext} audio @param {AbortSignal} signal */
function keepSounding(audio, signal) {
  const resume = () => {
    // Where there is no sound device it never comes to its end.
    if (!["running", "closed"].includes(audio.state)) audio.resume().catch(() => {});
  };
  audio.addEventListener("statechange", resume, { signal });
  document.addEventListener("keydown", resume, { signal });
  resume();
}

/** How fast the player's reader reads: once by a sentence. @returns {Promise<number>} */
async function readersPace() {
  const sentence = "Press Enter as soon as your screen reader has read this sentence to its end, " +
    "so that the game knows how fast it reads.";
  const voice = reader(DEFAULT_MS_A_CHARACTER);
  const began = performance.now();
  const key = await asked(voice, sentence, ["Enter"], 30000);
  const ms = (performance.now() - began) / sentence.length;
  return key === null || ms < 5 ? DEFAULT_MS_A_CHARACTER : Math.min(ms, 200);
}

/** It is there for one game; its data the browser keeps. */
function embeddedVoice() {
  return embedded ??= EmbeddedVoice.open();
}

function forgetEmbeddedVoice() {
  void embedded?.then((voice) => voice?.close());
  embedded = null;
}

/** Whether it may be wanted in this visit. */
function expectsEmbeddedVoice() {
  return [null, "embedded"].includes(kept("voice"));
}

/** The voice that the player has chosen, asked for at the first visit. @param {AudioContext} audio @returns {Promise<Voice>} */
async function chosenVoice(audio) {
  const choice = kept("voice");
  const own = expectsEmbeddedVoice() ? await Promise.race([embeddedVoice(), pass(VOICE_LOADS_MS).then(() => null)]) : null;
  if (own) own.audio = audio;
  if (choice === "embedded" && own) return own;
  const browsers = await BrowserVoice.find();
  if (choice === "browser" && browsers) return browsers;
  if (choice?.startsWith("reader ")) return reader(Number(choice.slice(7)) || DEFAULT_MS_A_CHARACTER);
  /** @type {[string, Voice, string][]} */
  const offers = [["reader", reader(DEFAULT_MS_A_CHARACTER), "Your screen reader."]];
  if (own) offers.unshift(["embedded", own, "The voice of the game."]);
  if (browsers) offers.unshift(["browser", browsers, "The voice of your browser."]);
  for (let round = 0; round < 20; ++round) {
    for (const [name, voice, what] of offers) {
      const key = await asked(voice, `${what} Press Enter now to hear the game this way, or wait for another.`, ["Enter"], 4000);
      if (key === null) continue;
      if (name !== "reader") {
        keep("voice", name);
        return voice;
      }
      const msACharacter = await readersPace();
      keep("voice", `reader ${msACharacter}`);
      return reader(msACharacter);
    }
  }
  return offers[0][1];
}

/**
 * Whether to drive by letters: asked once, as long as the player has no keys of his own.
 * @param {Voice} voice
 * @param {Map<string, Uint8Array>} own
 */
async function wantsLetterKeys(voice, own) {
  if (own.has("vorn1key.cfg") || kept("keys") !== null) return false;
  const key = await asked(voice, "Gas is left Control and brake is left Shift, which browsers and screen readers " +
    "want for themselves. Press A to drive with A for gas and Z for brake. Press Enter to keep Control and Shift.",
    ["KeyA", "Enter"], 30000);
  keep("keys", key === "KeyA" ? "letters" : "usual");
  return key === "KeyA";
}

/** @returns {Promise<void>} */
function loadScript() {
  if ("createVorn" in window) return Promise.resolve();
  return new Promise((resolve, reject) => {
    const script = document.createElement("script");
    script.src = "vorn1-page.js";
    script.onload = () => resolve();
    script.onerror = () => reject(new Error("vorn1-page.js could not be loaded"));
    document.head.append(script);
  });
}

/** @param {Game} to @param {string} call @param {Map<string, Uint8Array>} contents */
function handOver(to, call, contents) {
  for (const [name, bytes] of contents) {
    const address = to._malloc(bytes.length);
    to.HEAPU8.set(bytes, address);
    to.ccall(call, null, ["string", "number", "number"], [name, address, bytes.length]);
    to._free(address);
  }
}

/** Lets the game speak with the voice. @param {Game} to @param {EmbeddedVoice} voice */
function handOverVoice(to, voice) {
  for (const { name, identifier, language, priority } of voice.voices) {
    to.ccall("vorn_give_synth_voice", null, ["string", "string", "string", "number"], [name, identifier, language, priority]);
  }
  voice.serve(/** @type {any} */ (to.wasmMemory.buffer), to._vorn_give_synth(voice.sampleRate));
}

/** Makes the game's ring of sound heard. @param {Game} from @param {AudioContext} audio */
async function connectSound(from, audio) {
  await audio.audioWorklet.addModule("worklet.js");
  const player = new AudioWorkletNode(audio, "ring-player", {
    numberOfInputs: 0,
    outputChannelCount: [2],
    processorOptions: { memory: from.wasmMemory.buffer, ring: from._vorn_ring() },
  });
  player.connect(audio.destination);
}

/**
 * How the game keeps up, for tests and measurements: `vornFigures()` at any time of a game and behind it.
 * @param {Game} of @param {AudioContext} audio
 */
function showFigures(of, audio) {
  /** @param {number} frames */
  const ms = (frames) => 1000 * frames / audio.sampleRate;
  const figures = () => ({
    tickWaits: of._vorn_tick_waits(),
    tickLateMs: { p50: of._vorn_ticks_late(0.5), p99: of._vorn_ticks_late(0.99), most: of._vorn_ticks_late(1) },
    gaps: of._vorn_gaps(),
    missedMs: ms(of._vorn_frames_missed()),
    aheadMs: ms(of._vorn_frames_ahead()),
    playedS: audio.currentTime,
    deviceMs: 1000 * (audio.baseLatency + audio.outputLatency),
  });
  Object.assign(window, { vornFigures: figures });
}

/**
 * Carries out what the game tells.
 * @param {Game} from
 * @param {Voice} voice
 * @param {(status: number) => void} ended
 */
function listener(from, voice, ended) {
  /** @param {Promise<void>} change @param {number} request */
  const answer = (change, request) => change.then(() => from._vorn_stored(request, 1), () => from._vorn_stored(request, 0));
  /** @param {number} what @param {number} number @param {Uint8Array} bytes */
  return (what, number, bytes) => {
    const text = decoder.decode(bytes);
    if (what === CAPTION) document.title = text.trim() || "Vorn 1 TTS";
    else if (what === SPOKEN) showCaption(text);
    else if (what === SAY) {
      const [index, rate, volume, ...rest] = text.split("\x1f");
      voice.say({ text: rest.join(" "), voice: Number(index), rate: Number(rate), volume: Number(volume) },
        () => from._vorn_said(number));
    } else if (what === SILENCE) voice.silence();
    else if (what === BOX) showBox(from, text);
    else if (what === STORE) {
      const end = bytes.indexOf(0);
      answer(files.put(decoder.decode(bytes.subarray(0, end)), bytes.slice(end + 1)), number);
    } else if (what === REMOVE) answer(files.remove(text), number);
    else if (what === ENDED) ended(number);
    else if (what === DIAGNOSIS) console.error(text);
    else if (what === RUMBLE) rumble(number, text);
    else if (what === VOICE_LOST && voice instanceof EmbeddedVoice) void voice.replaceWorker();
  };
}

/** Where the browser can and the player wants it. @param {number} pad @param {string} text strength of the heavy and the light motor, milliseconds */
function rumble(pad, text) {
  if (kept("rumble") === "off") return;
  const [strongMagnitude, weakMagnitude, duration] = text.split(" ").map(Number);
  navigator.getGamepads()[pad]?.vibrationActuator?.playEffect("dual-rumble", { duration, strongMagnitude, weakMagnitude }).catch(() => {});
}

/** @param {Game} from @param {string} text */
function showBox(from, text) {
  const box = element("box"), ok = element("box-ok");
  element("box-text").textContent = text;
  box.hidden = false;
  ok.focus();
  ok.onclick = () => {
    box.hidden = true;
    track.focus();
    from._vorn_answered();
  };
}

/** Keys that the page and the browser keep: away from the game, and the tools. */
const KEPT_KEYS = ["Tab", "F5", "F6", "F11", "F12"];
/** Those with which a button or a link is pressed. */
const PRESSING_KEYS = ["Enter", "NumpadEnter", "Space"];

/** @param {KeyboardEvent} event */
function isForThePage({ code, metaKey, target }) {
  return KEPT_KEYS.includes(code) || metaKey ||
    (PRESSING_KEYS.includes(code) && target instanceof Element && target.matches("a, button, input"));
}

/**
 * The game gets the keys wherever in the page the focus is: who presses Tab in a race goes on driving, and is
 * not in the background before the whole page is.
 * @param {Game} to
 * @param {AbortSignal} signal
 */
function passKeysOn(to, signal) {
  /** @param {KeyboardEvent} event */
  const pass = (event) => {
    const isDown = event.type === "keydown";
    if (!isForThePage(event)) event.preventDefault();
    else if (isDown) return;  // but a key that is let go of may have gone down for the game
    if (event.repeat) return;
    const shiftState = Number(event.shiftKey) + 2 * Number(event.ctrlKey) + 4 * Number(event.altKey);
    to.ccall("vorn_key", null, ["number", "string", "string", "number"],
      [Number(isDown), event.code, event.key, shiftState]);
  };
  document.addEventListener("keydown", pass, { signal });
  document.addEventListener("keyup", pass, { signal });
  window.addEventListener("focus", () => to._vorn_focus(1), { signal });
  window.addEventListener("blur", () => to._vorn_focus(0), { signal });
  window.addEventListener("beforeunload", (event) => {
    if (to._vorn_is_racing()) event.preventDefault();
  }, { signal });
}

/** @param {Game} to @param {AbortSignal} signal */
function passPadsOn(to, signal) {
  const MOST_AXES = 32, MOST_BUTTONS = 64;
  const axes = to._malloc(8 * MOST_AXES), buttons = to._malloc(MOST_BUTTONS);
  const report = () => {
    for (const pad of navigator.getGamepads()) {
      if (!pad?.connected) continue;
      const isStandard = pad.mapping === "standard";
      const travels = pad.axes.slice(0, isStandard ? 4 : MOST_AXES);
      // Triggers are buttons by degrees; the game wants them as axes behind the sticks.
      if (isStandard) travels.push(...[6, 7].map((trigger) => 2 * (pad.buttons[trigger]?.value ?? 0) - 1));
      to.HEAPF64.set(travels, axes / 8);
      const pressed = pad.buttons.slice(0, MOST_BUTTONS).map((button) => Number(button.pressed));
      to.HEAPU8.set(pressed, buttons);
      to.ccall("vorn_pad", null, ["number", "string", "number", "number", "number", "number", "number"],
        [pad.index, pad.id, Number(isStandard), axes, travels.length, buttons, pressed.length]);
    }
  };
  report();
  const timer = window.setInterval(report, PAD_EVERY_MS);
  window.addEventListener("gamepaddisconnected", (event) => to._vorn_pad_gone(event.gamepad.index), { signal });
  signal.addEventListener("abort", () => window.clearInterval(timer));
}

/** Calls `stopped` where the game's thread no longer does anything. @param {Game} of @param {AbortSignal} signal @param {() => void} stopped */
function watchPulse(of, signal, stopped) {
  let last = -1, missed = 0;
  const timer = window.setInterval(() => {
    const pulse = of._vorn_pulse();
    missed = pulse === last && !document.hidden ? missed + 1 : 0;
    last = pulse;
    if (missed >= PULSES_MISSED) stopped();
  }, PULSE_EVERY_MS);
  signal.addEventListener("abort", () => window.clearInterval(timer));
}

/**
 * Tells how late the sound device is. A busy machine makes it late for moments: the least of three looks counts.
 * @param {Game} to @param {AudioContext} audio @param {AbortSignal} signal
 */
function passLatenessOn(to, audio, signal) {
  /** @type {number[]} */
  let looks = [];
  const timer = window.setInterval(() => {
    looks = [...looks, audio.outputLatency || 0].slice(-3);
    if (looks.length === 3) to._vorn_device_late(Math.round(1000 * Math.min(...looks)));
  }, LATENESS_EVERY_MS);
  signal.addEventListener("abort", () => window.clearInterval(timer));
}

async function play() {
  start.disabled = true;
  track.hidden = false;
  track.focus();
  captions.replaceChildren();
  const playing = new AbortController();
  const audio = new AudioContext({ latencyHint: "interactive", sampleRate: 48000 });
  keepSounding(audio, playing.signal);
  /** @type {((what: number, number: number, bytes: Uint8Array) => void) | null} */
  let listen = null;
  /** @param {string} why */
  const end = (why) => {
    if (playing.signal.aborted) return;
    playing.abort();
    listen = null;  // what it still tells is not the next one's
    void audio.close();
    forgetEmbeddedVoice();
    tell(why);
    start.disabled = false;
    start.focus();
    game?.PThread.terminateAllThreads();
    game = null;
  };
  try {
    tell("Loading the voice.");
    const voice = await chosenVoice(audio);
    const own = await files.all();
    const byLetters = await wantsLetterKeys(voice, own);
    tell("Loading the sounds.");
    await loadScript();
    const created = /** @type {Game} */ (await /** @type {any} */ (window).createVorn({
      /** @param {[number, number, Uint8Array]} message */
      told: (...message) => listen?.(...message),
      /** @param {unknown} reason */
      onAbort: (reason) => end(`The game has stopped: ${reason}`),
    }));
    game = created;
    listen = listener(created, voice, () => {
      voice.silence();
      end("The game has ended.");
    });
    handOver(created, "vorn_give_file", own);
    handOver(created, "vorn_give_sound", await sounds);
    for (const name of voice.names) created.ccall("vorn_give_voice", null, ["string"], [name]);
    if (voice instanceof EmbeddedVoice) handOverVoice(created, voice);
    else forgetEmbeddedVoice();
    await connectSound(created, audio);
    showFigures(created, audio);
    passKeysOn(created, playing.signal);
    passPadsOn(created, playing.signal);
    passLatenessOn(created, audio, playing.signal);
    watchPulse(created, playing.signal, () => end("The game has stopped. Start it again; records and settings are kept."));
    tell("The game is running. Keys go to it.");
    track.focus();
    created.callMain(byLetters ? ["--letter-keys"] : []);
  } catch (error) {
    end(`The game could not be started: ${error}`);
  }
}

function offerChoices() {
  const shakes = /** @type {HTMLInputElement} */ (element("rumble"));
  shakes.checked = kept("rumble") !== "off";
  shakes.onchange = () => keep("rumble", shakes.checked ? null : "off");
  element("voice").onclick = () => {
    keep("voice", null);
    tell("The voice is asked for at the next start.");
  };
  element("export").onclick = async () => {
    const link = document.createElement("a");
    link.href = URL.createObjectURL(await files.exported());
    link.download = "vorn1-player.zip";
    link.click();
    URL.revokeObjectURL(link.href);
  };
  const input = /** @type {HTMLInputElement} */ (element("import"));
  input.onchange = async () => {
    const file = input.files?.[0];
    if (!file) return;
    try {
      if (game) throw new Error("end the game first");
      const count = await files.import(new Uint8Array(await file.arrayBuffer()));
      tell(`${count} files were brought.`);
    } catch (error) {
      tell(`Nothing was brought: ${error}`);
    }
    input.value = "";
  };
}

/**
 * Threads need two headers, which the service worker sends where the host does not: from the second load on,
 * and not after a reload with Shift, which goes past it.
 */
async function isolated() {
  if (!crossOriginIsolated && "serviceWorker" in navigator && !sessionStorage.getItem("vorn1.reloaded")) {
    sessionStorage.setItem("vorn1.reloaded", "yes");
    await navigator.serviceWorker.register("sw.js");
    await navigator.serviceWorker.ready;
    // As a link leads here: reload() does nothing in a page that was itself reloaded past the service worker.
    location.replace(location.pathname + location.search);
    return false;
  }
  // Not waited for: a registration that is there already may take its time to look for a newer one.
  navigator.serviceWorker?.register("sw.js").catch(() => {});
  sessionStorage.removeItem("vorn1.reloaded");
  if (!crossOriginIsolated) {
    tell("This browser gives the page no threads, which the game needs. Reload the page; where that does not help try a newer browser.");
  }
  return crossOriginIsolated;
}

/**
 * Two games would write over each other's files. A page that is being left, by a reload of
 * this one for instance, takes a moment to let go.
 * @returns {Promise<boolean>}
 */
async function onlyOne() {
  for (let attempt = 0; attempt < 20; ++attempt) {
    const isMine = await new Promise((resolve) => {
      void navigator.locks.request("vorn1", { ifAvailable: true }, (lock) => {
        resolve(lock !== null);
        return lock === null ? undefined : new Promise(() => {});
      });
    });
    if (isMine) return true;
    await pass(250);
  }
  return false;
}

async function begin() {
  if (!await isolated()) return;
  if (!await onlyOne()) {
    tell("The game is open in another tab or window already.");
    return;
  }
  files = await PlayerFiles.open();
  if (expectsEmbeddedVoice()) void embeddedVoice();
  sounds = fetch("sounds.pack").then((answer) => answer.arrayBuffer()).then(unpackedSounds);
  await sounds;
  offerChoices();
  start.disabled = false;
  start.onclick = () => void play();
  tell("Ready.");
}

begin().catch((error) => tell(`The game could not be loaded: ${error}`));
