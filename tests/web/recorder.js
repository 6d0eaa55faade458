// @ts-check
// The game's sound as the browser plays it.

/** Notes what the game's player puts out, on the thread that plays it, so that a busy page misses nothing. */
export function withRecorder(page) {
  return page.evaluateOnNewDocument(() => {
    const recorder = `registerProcessor("recorder", class extends AudioWorkletProcessor {
      process([input]) {
        if (input.length) this.port.postMessage(input[0].slice());
        return true;
      }
    });`;
    const addModule = AudioWorklet.prototype.addModule, connect = AudioNode.prototype.connect;
    window.captured = [];
    AudioWorklet.prototype.addModule = async function (...args) {
      await addModule.call(this, URL.createObjectURL(new Blob([recorder], { type: "text/javascript" })));
      return addModule.apply(this, args);
    };
    AudioNode.prototype.connect = function (...args) {
      if (this instanceof AudioWorkletNode) {
        const node = new AudioWorkletNode(this.context, "recorder", { numberOfOutputs: 0 });
        node.port.onmessage = ({ data }) => window.captured.push(...data);
        connect.call(this, node);
      }
      return connect.apply(this, args);
    };
  });
}

/** How much has been noted. @param {import("./browser.js").Player} player @returns {Promise<number>} */
export function recorded(player) {
  return player.page.evaluate(() => window.captured.length);
}

/** @param {import("./browser.js").Player} player @param {number} from @returns {Promise<Float32Array>} what has been noted since then */
export async function recordedSince(player, from) {
  const text = await player.page.evaluate((begin) => {
    const bytes = new Uint8Array(Float32Array.from(window.captured.slice(begin)).buffer);
    let all = "";
    for (let at = 0; at < bytes.length; at += 32768) all += String.fromCharCode(...bytes.subarray(at, at + 32768));
    return btoa(all);
  }, from);
  const bytes = Uint8Array.from(Buffer.from(text, "base64"));
  return new Float32Array(bytes.buffer);
}
