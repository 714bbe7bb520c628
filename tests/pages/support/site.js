// A site as the web page export writes it: a directory, a server on loopback for it, templates filled with rows.
import { mkdirSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { createServer } from 'node:http';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { sourcePath } from './paths.js';

/** An empty directory with the map viewer in it; `remove` deletes it. */
export function createSite() {
  const directory = mkdtempSync(join(tmpdir(), 'quillon-pages-'));
  const site = {
    directory,
    write(name, content) {
      mkdirSync(directory, { recursive: true });
      writeFileSync(join(directory, name), typeof content === 'string' ? Buffer.from(content, 'latin1') : content);
    },
    path: (name) => join(directory, name),
    remove: () => rmSync(directory, { recursive: true, force: true }),
  };
  site.write('quillon_mapview.htm', readFileSync(sourcePath('data/quillon_mapview.htm')));
  return site;
}

/** Serves the site's directory on a free port of loopback: { address, requests, close }. No charset is declared. */
export async function serve(site) {
  const requests = [];
  const types = { htm: 'text/html', kml: 'application/vnd.google-earth.kml+xml' };
  const server = createServer((request, response) => {
    requests.push(request.url);
    const name = decodeURIComponent(new URL(request.url, 'http://localhost').pathname.slice(1));
    try {
      const content = readFileSync(join(site.directory, name.replace(/[/\\]/g, '_')));
      response.writeHead(200, { 'Content-Type': types[name.split('.').pop()] ?? 'application/octet-stream' });
      response.end(content);
    } catch {
      response.writeHead(404);
      response.end();
    }
  });
  await new Promise((resolve) => { server.listen(0, '127.0.0.1', resolve); });
  return {
    address: `http://127.0.0.1:${server.address().port}/`,
    requests,
    close: () => new Promise((resolve) => {
      server.closeAllConnections();
      server.close(resolve);
    }),
  };
}

const cell = (text) => (text === '' ? '&nbsp;' : text);
const blankCount = (text) => (text > '0' ? text : '&nbsp;');
const rowOf = (cells) => `<tr><td>${cells.map((each) => each.replace(/<(?=meta|link|iframe|form)/gi, '&lt;')).join('</td><td>')}</td></tr>`;

/** Every character but digits, letters and blanks as a reference. */
export function encode(text) {
  return text.replace(/[^0-9A-Za-z ]/g, (character) => `&#${character.charCodeAt(0)};`);
}

/** A month page's row of [date, pi, freq, rds, country, transmitter, dist, power, notes, prop]. */
export function logRow(cells) {
  return rowOf(cells.map((text, i) => {
    if (i === 5) return cell(encode(text));
    return cell(i === 8 ? text.replace(/\r\n/g, '<br>') : text);
  }));
}

/** The index row of a month: { year, month, ms, es, tropo, other, total, map }. */
export function indexRow({ year, month, ms, es, tropo, other, total, map }) {
  const name = `quillon_log_${year}-${month}`;
  return rowOf([
    `${month}-${year}`,
    `<a href="${name}.htm">View Log</a>`,
    ...[ms, es, tropo, other].map((count) => blankCount(String(count))),
    String(total),
    cell(map ? `<a href="quillon_mapview.htm?kml=${name}.kml">View Map</a>` : ''),
  ]);
}

/** A template filled line by line, the rows before the line that names them, lines ended by CR LF. */
export function fill(template, values, rows) {
  const lines = readFileSync(sourcePath(`data/${template}`), 'latin1').replace(/\n$/, '').split('\n');
  return lines.flatMap((line) => {
    let text = line;
    for (const [name, value] of Object.entries(values)) text = text.replaceAll(`$${name}`, () => value);
    return text.includes('$RAWDATA') ? [...rows, text.replaceAll('$RAWDATA', '')] : [text];
  }).map((line) => `${line}\r\n`).join('');
}

export const fillIndex = (values, rows) => fill('quillon_index.template', {
  CALLSIGN: 'SWL-1', TOTAL: '0', VERSION: 'V1.0.0', GENERATED: '05/07/2010 21:34:00', ...values,
}, rows);

export const fillLog = (monthYear, rows) => fill('quillon_log.template', { MONTHYEAR: monthYear }, rows);

/** Writes a KML file and the script beside it that holds the same for a page that is opened from a disk. */
export function writeMap(site, name, text) {
  site.write(name, text);
  site.write(`${name}.js`, `window.quillonMap = "${Buffer.from(text, 'latin1').toString('base64')}";\n`);
}

/** A KML file as it is exported; a place is { name, country, lat, lon, colour, receptions: [[date, pi, rds, freq]] }. */
export function kmlText(folder, places) {
  const lines = ['<?xml version="1.0" encoding="UTF-8"?>', '<kml xmlns="http://earth.google.com/kml/2.1">', '<Folder>', `<name>${folder}</name>`];
  for (const { name, country, lat, lon, colour = 'ff00aaff', receptions } of places) {
    lines.push(`<Placemark><name>${name} (${country})</name>`);
    if (receptions) {
      lines.push('<description><![CDATA[ <ol>');
      for (const fields of receptions) lines.push(`<li>[${fields.join('] [')}]</li>`);
      lines.push('</ol>]]> </description>');
    }
    lines.push(`<Style><IconStyle><color>${colour}</color></IconStyle></Style>`);
    lines.push('<Point><extrude>1</extrude><altitudeMode>relativeToGround</altitudeMode>');
    lines.push(`<coordinates>${lon},${lat},200</coordinates>`);
    lines.push('</Point></Placemark>');
  }
  lines.push('</Folder>', '</kml> ');
  return lines.map((line) => `${line}\r\n`).join('');
}
