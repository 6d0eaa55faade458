// Writes docs/manual.md as a page, or only its chapter of the keys: node paper.js manual|keys
import { readFileSync } from "node:fs";
import { createRequire } from "node:module";

const npm = createRequire(new URL("../../build/web/npm/", import.meta.url));
const { marked } = npm("marked");

const which = process.argv[2];
let text = readFileSync(new URL("../../docs/manual.md", import.meta.url), "utf8");
if (which === "keys") {
  const begin = text.indexOf("## The keys");
  text = text.slice(begin, text.indexOf("\n## ", begin + 1)).replace("## ", "# ");
}
/** As the links within the manual name its chapters. */
const anchor = (heading) => heading.toLowerCase().replace(/<[^>]*>/g, "").replace(/[^\w\- ]/g, "").replaceAll(" ", "-");
marked.use({
  renderer: {
    heading({ tokens, depth }) {
      const inner = this.parser.parseInline(tokens);
      return `<h${depth} id="${anchor(inner)}">${inner}</h${depth}>\n`;
    },
    // Other papers do not come with the page.
    link({ href, tokens }) {
      const inner = this.parser.parseInline(tokens);
      return href.startsWith("#") ? `<a href="${href}">${inner}</a>` : inner;
    },
  },
});
console.log(`<!doctype html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>${which === "keys" ? "Keys" : "Manual"} - Vorn 1 TTS</title>
<style>
  body { background: #000; color: #fff; font: 1.25rem/1.5 sans-serif; margin: 0 auto; max-width: 45rem; padding: 1rem; }
  a { color: #ff6; }
</style>
</head>
<body>
<main>
${marked.parse(text)}
<p><a href="./">To the game</a></p>
</main>
</body>
</html>`);
