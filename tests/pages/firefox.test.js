// The map viewer in Firefox, opened from the disk: what its policy lets through is each browser's own reading.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { setTimeout as pause } from 'node:timers/promises';
import { startFirefox } from './support/firefox.js';
import { hostileKmlTexts } from './support/hostile.js';
import { writeSample } from './support/sample.js';
import { createSite, kmlText, writeMap } from './support/site.js';

let site;
let firefox;
before(async () => {
  site = createSite();
  writeSample(site);
  firefox = await startFirefox();
}, { timeout: 90000 });
after(async () => {
  await firefox?.close();
  site?.remove();
});

async function open(name) {
  await firefox.open(`file://${site.path('quillon_mapview.htm')}?kml=${name}`);
  for (const end = Date.now() + 20000; Date.now() < end; await pause(50)) {
    const state = await firefox.evaluate('return document.body.dataset.state ?? null');
    if (state) return state;
  }
  return null;
}

test('the map is shown at once', { timeout: 60000 }, async () => {
  assert.equal(await open('quillon.kml'), 'shown');
  assert.equal(await firefox.evaluate('return document.title'), 'Quillon Full');
  assert.equal(await firefox.evaluate("return document.getElementById('map').dataset.markers"), '25');
});

test('without the script beside the file it asks for the file', { timeout: 60000 }, async () => {
  assert.equal(await open('missing.kml'), 'explained');
  assert.match(await firefox.evaluate("return document.getElementById('explanationtext').textContent"), /Drop missing\.kml here/);
});

test('hostile names are text', { timeout: 60000 }, async () => {
  const places = hostileKmlTexts.map((name, i) => ({ name, country: 'D', lat: '', lon: '', receptions: [['05/07/2010', String(i), name, '88.8']] }));
  writeMap(site, 'hostile.kml', kmlText('Hostile', places));
  assert.equal(await open('hostile.kml'), 'shown');
  assert.equal(await firefox.evaluate("return document.querySelectorAll('script:not(#world), iframe, object, embed, svg, video, base, link').length"), 1);
});
