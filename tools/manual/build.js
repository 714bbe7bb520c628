// Writes data/manual.html, one file with everything in it, from docs/manual and the pictures of the tour.
//   node tools/manual/build.js           writes it
//   node tools/manual/build.js --check   says whether it is up to date
import { existsSync, readFileSync, writeFileSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';

const root = join(dirname(fileURLToPath(import.meta.url)), '../..');
const target = join(root, 'data/manual.html');
const read = (path) => readFileSync(join(root, path));
const escape = (text) => text.replaceAll('&', '&amp;').replaceAll('"', '&quot;');

/** Width and height of a PNG. */
function sizeOf(png) {
  return [png.readUInt32BE(16), png.readUInt32BE(20)];
}

/** The figure of a line "picture NAME | what it shows | caption". Shown at the size of the window that it is of. */
function figure(name, alt, caption) {
  const png = read(`docs/pictures/${name}.png`);
  const [width, height] = sizeOf(png);
  const source = (bytes) => `data:image/png;base64,${bytes.toString('base64')}`;
  const dark = `docs/pictures/${name}-dark.png`;
  const darkSource = existsSync(join(root, dark))
    ? `<source media="(prefers-color-scheme: dark)" srcset="${source(read(dark))}">\n` : '';
  return `<figure${width > 1000 ? ' class="wide"' : ''}>\n<picture>\n${darkSource}`
    + `<img alt="${escape(alt)}" width="${width}" height="${height}" src="${source(png)}">\n</picture>\n`
    + `<figcaption>${caption}</figcaption>\n</figure>`;
}

function page() {
  const body = read('docs/manual/manual.html').toString()
    .replace(/<!-- picture (\S+) \| ([^|]+?) \| ([^|]+?) -->/g, (_, name, alt, caption) => figure(name, alt, caption));
  return `<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<!-- One file, with its pictures: it needs no network and runs no script. -->
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; img-src data:; style-src 'unsafe-inline'; base-uri 'none'; form-action 'none'">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<title>Quillon: the manual</title>
<style>
${read('docs/manual/page.css')}</style>
</head>
<body>
${body}</body>
</html>
`;
}

const wanted = page();
if (process.argv.includes('--check')) {
  if (!existsSync(target) || readFileSync(target, 'utf8') !== wanted) {
    console.error('data/manual.html is not what node tools/manual/build.js writes');
    process.exit(1);
  }
} else {
  writeFileSync(target, wanted);
  console.log(`${target}: ${Math.round(wanted.length / 1024)} KiB`);
}
