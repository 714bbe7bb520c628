// Builds data/quillon_mapview.htm from src/, Leaflet and the outlines of Natural Earth. "--stdout" only prints it.
import { createHash } from 'node:crypto';
import { readFileSync, writeFileSync } from 'node:fs';
import { outlines } from './outlines.js';

const here = (path) => new URL(path, import.meta.url);
const read = (path) => readFileSync(here(path), 'utf8').replace(/\r\n/g, '\n');
const packageOf = (name) => JSON.parse(read(`node_modules/${name}/package.json`));

// In the order in which they build on one another; the page joins them into one script.
const sources = ['bytes', 'dom', 'geo', 'kml', 'world', 'card', 'map', 'list', 'page'];

function joinSources() {
  const texts = sources.map((name) => read(`src/${name}.js`));
  const names = texts.flatMap((text) => [...text.matchAll(/^(?:export )?(?:async )?(?:function|const|let|class) (\w+)/gm)].map((match) => match[1]));
  const twice = names.filter((name, i) => names.indexOf(name) !== i);
  if (twice.length > 0) throw new Error(`declared in two files: ${twice.join(', ')}`);
  const parts = texts.map((text) => text.replace(/^import .*\n/gm, '').replace(/^export /gm, ''));
  return `(() => {\n'use strict';\n\n${parts.join('\n')}\n})();\n`;
}

function leafletScript() {
  return read('node_modules/leaflet/dist/leaflet.js').replace(/\n?\/\/# sourceMappingURL=.*\s*$/, '\n');
}

// The page loads nothing, so rules that name pictures go.
function leafletStyle() {
  return read('node_modules/leaflet/dist/leaflet.css').replace(/^.*url\(.*\n/gm, '');
}

function licences() {
  const leaflet = `Leaflet ${packageOf('leaflet').version}\n\n${read('node_modules/leaflet/LICENSE')}`;
  const atlas = `Outlines: Natural Earth (public domain), by way of world-atlas ${packageOf('world-atlas').version}\n\n${read('node_modules/world-atlas/LICENSE')}`;
  const own = 'Map viewer of Quillon. GPL-3.0-or-later.\n'
    + 'Built from tools/mapview of its source; a script that is changed here no longer matches the policy above and does not run.\n';
  return `<!--\n${own}\n${leaflet}\n${atlas}-->`;
}

function build() {
  const script = `\n${leafletScript()}${joinSources()}`;
  if (/<\/script|<!--/i.test(script)) throw new Error('the script would end before its end');
  const hash = createHash('sha256').update(script).digest('base64');
  // "file:" is for the map data beside a page that was opened from a disk; from a server it lets nothing in.
  const policy = `default-src 'none'; script-src 'sha256-${hash}' file:; style-src 'unsafe-inline'; connect-src 'self'; `
    + "img-src data: https://tile.openstreetmap.org; base-uri 'none'; form-action 'none'";
  const parts = {
    CSP: `<meta http-equiv="Content-Security-Policy" content="${policy}">\n${licences()}`,
    STYLE: `<style>\n${leafletStyle()}\n${read('src/page.css')}</style>`,
    WORLD: `<script type="application/json" id="world">${outlines(JSON.parse(read('node_modules/world-atlas/countries-50m.json')))}</script>`,
    SCRIPT: `<script>${script}</script>`,
  };
  return read('src/page.html').replace(/<!--(CSP|STYLE|WORLD|SCRIPT)-->/g, (_, name) => parts[name]);
}

if (process.argv.includes('--stdout')) process.stdout.write(build());
else writeFileSync(here('../../data/quillon_mapview.htm'), build());
