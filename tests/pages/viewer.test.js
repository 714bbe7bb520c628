// The map viewer in a browser: what it shows, what it refuses, and that nothing from a file runs.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { createHash } from 'node:crypto';
import { readFileSync } from 'node:fs';
import { after, before, test } from 'node:test';
import { startBrowser } from './support/browser.js';
import { isDark, lowestContrast, overflow } from './support/checks.js';
import { hostileKmlTexts } from './support/hostile.js';
import { sourcePath } from './support/paths.js';
import { home, writeSample } from './support/sample.js';
import { createSite, encode, kmlText, serve, writeMap } from './support/site.js';

const viewer = 'quillon_mapview.htm';
const pixel = Buffer.from('iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJggg==', 'base64');
const phone = { viewport: { width: 360, height: 740 }, isMobile: true, hasTouch: true };
const place = (changes) => ({ name: 'Langenberg', country: 'D', lat: '51.35', lon: '7.13', receptions: [['05/07/2010 21:34:00', 'D395', ' WDR 5  ', '88.8']], ...changes });

let site;
let server;
let browser;
before(async () => {
  site = createSite();
  writeSample(site);
  server = await serve(site);
  browser = await startBrowser();
});
after(async () => {
  await browser?.close();
  await server?.close();
  site?.remove();
});

async function withPage(options, work) {
  const opened = await browser.newPage(options);
  try {
    await work(opened.page, opened.seen);
    assert.deepEqual(opened.seen.errors, []);
    assert.deepEqual(opened.seen.ran, []);
  } finally {
    await opened.close();
  }
}

async function open(page, query) {
  await page.goto(`${server.address}${viewer}${query}`);
  await page.waitForSelector('body[data-state]');
  return page.getAttribute('body', 'data-state');
}

async function openKml(page, places, query = '') {
  site.write('test.kml', kmlText('Quillon Full', places));
  assert.equal(await open(page, `?kml=test.kml${query}`), 'shown');
}

const markers = (page) => page.getAttribute('#map', 'data-markers');
const summary = (page) => page.innerText('#summary');
const row = (page, name) => page.locator('#list li', { hasText: name });

// A single transmitter stands in the middle of the map.
async function clickMiddle(page) {
  const box = await page.locator('#map').boundingBox();
  await page.mouse.click(box.x + box.width / 2, box.y + box.height / 2);
  await page.waitForSelector('.leaflet-popup .card');
}

test('the committed page is what its sources build', () => {
  const built = spawnSync(process.execPath, [sourcePath('tools/mapview/build.js'), '--stdout'], { maxBuffer: 1 << 26 });
  assert.equal(built.status, 0, built.stderr.toString());
  assert.ok(built.stdout.equals(readFileSync(sourcePath(`data/${viewer}`))), 'run node build.js in tools/mapview');
});

test('the policy lets the one script of the page run and, on a disk only, files beside it, and pictures come from the tile server only', () => {
  const html = readFileSync(sourcePath(`data/${viewer}`), 'utf8');
  const scripts = [...html.matchAll(/<script([^>]*)>([^]*?)<\/script>/g)].filter(([, attributes]) => !attributes.includes('application/json'));
  assert.equal(scripts.length, 1);
  const hash = createHash('sha256').update(scripts[0][2]).digest('base64');
  assert.ok(html.includes(`content="default-src 'none'; script-src 'sha256-${hash}' file:; style-src 'unsafe-inline'; connect-src 'self'; `
    + "img-src data: https://tile.openstreetmap.org; base-uri 'none'; form-action 'none'\""));
  const markup = html.replace(/<script[^>]*>[^]*?<\/script>/g, '');
  assert.deepEqual(markup.match(/\b(?:src|href)=\S+|url\([^)]*\)|@import/g), ['href="quillon_logindex.htm"']);
  assert.ok(html.length < 1500000);
});

test('the exported log is shown: markers, totals, list, title', () => withPage({}, async (page, seen) => {
  assert.equal(await open(page, '?kml=quillon.kml'), 'shown');
  assert.equal(await page.title(), 'Quillon Full');
  assert.equal(await markers(page), '25');
  assert.equal(await summary(page), '26 transmitters \u00b7 225 receptions \u00b7 1 transmitter has no position');
  assert.equal(await page.locator('#list li').count(), 26);
  assert.equal(await page.locator('#explanation').isVisible(), false);
  assert.equal(await page.locator('.leaflet-control-scale').isVisible(), true);
  assert.match(await page.locator('.leaflet-control-scale-line').first().innerText(), /^[1-9]\d* k?m$/);
  assert.deepEqual(seen.outside, []);
}));

test('a click on a marker lists its receptions as text', () => withPage({}, async (page) => {
  await openKml(page, [place({ receptions: [['05/07/2010 21:34:00', 'D395', ' WDR 5  ', '88.8'], ['06/07/2010 08:00:00', '', '', '88.8']] })]);
  await clickMiddle(page);
  assert.equal(await page.innerText('.card h2'), 'Langenberg');
  assert.equal(await page.innerText('.card p'), 'D \u00b7 2 receptions');
  assert.deepEqual(await page.locator('.card tbody tr').first().locator('td').allTextContents(), ['05/07/2010 21:34:00', '88.8', 'D395', ' WDR 5  ']);
  await page.keyboard.press('Escape');
  await page.waitForSelector('.leaflet-popup', { state: 'detached' });
}));

test('a marker has the colour that the file gives', () => withPage({}, async (page) => {
  for (const [colour, expected] of [['ff00aaff', [255, 170, 0]], ['ff0000ff', [255, 0, 0]], ['ffcc8800', [0, 136, 204]]]) {
    await openKml(page, [place({ colour })]);
    const found = await page.evaluate(() => new Promise((resolve) => {
      requestAnimationFrame(() => requestAnimationFrame(() => {
        const canvas = document.querySelector('.leaflet-overlay-pane canvas');
        const [box, map] = [canvas.getBoundingClientRect(), document.getElementById('map').getBoundingClientRect()];
        const scale = canvas.width / box.width;
        const at = [map.x + map.width / 2 - box.x, map.y + map.height / 2 - box.y];
        resolve([...canvas.getContext('2d').getImageData(at[0] * scale, at[1] * scale, 1, 1).data.slice(0, 3)]);
      }));
    }));
    for (let i = 0; i < 3; i++) assert.ok(Math.abs(found[i] - expected[i]) < 4, `${found} for ${colour}`);
  }
}));

test('transmitters without a position are listed and counted but not placed', () => withPage({}, async (page) => {
  await openKml(page, [place({}), ...['One', 'Two', 'Three'].map((name) => place({ name, lat: '', lon: '' }))]);
  assert.equal(await markers(page), '1');
  assert.match(await summary(page), /3 transmitters have no position/);
  await row(page, 'Two').click();
  assert.match(await page.innerText('#unplacedcard'), /^Two\s+D \u00b7 no position \u00b7 1 reception/);
  await page.click('#unplacedclose');
  assert.equal(await page.locator('#unplaced').isVisible(), false);
}));

test('transmitters at one place are reached from each other\u2019s pop-up', () => withPage({}, async (page) => {
  await openKml(page, [place({ name: 'A' }), place({ name: 'B' })]);
  await clickMiddle(page);
  const first = await page.innerText('.card h2');
  await page.click('.neighbours button');
  assert.deepEqual([first, await page.locator('.card h2').last().innerText()].sort(), ['A', 'B']);
}));

test('bytes of the code page, character references, bare "&" and "<" are read', () => withPage({}, async (page) => {
  await openKml(page, [
    place({ name: 'K\u00f6ln', country: 'A&B<C' }), place({ name: encode('K\u00f6ln/S\u00fcd'), country: '\u00d6' }), place({ name: '&#138;&#352;', country: '\x8a' }), place({ name: 'R&D <b>x' }),
  ]);
  const names = await page.locator('#list b').allInnerTexts();
  assert.deepEqual(names.sort(), ['K\u00f6ln', 'K\u00f6ln/S\u00fcd', 'R&D <b>x', '\u0160\u0160']);
  assert.match(await page.innerText('#list'), /A&B<C/);
  assert.match(await page.innerText('#list'), /\u0160\u0160\s+\u0160/);
}));

test('bytes, references and links are read in the code page that the page names', () => withPage({}, async (page) => {
  site.write('polish.htm', Buffer.from(readFileSync(site.path(viewer), 'utf8').replace('<meta name="kml-charset" content="windows-1252">', '<meta name="kml-charset" content="windows-1250">')));
  site.write('quillon_log_2010-pa\u017a.kml', kmlText('Quillon 2010-pa\x9f', [place({ name: '\xa3\xf3d\x9f', country: 'POL' }), place({ name: '&#163;&#243;d&#159; Po&#179;udnie', country: '\xa3' })]));
  await page.goto(`${server.address}polish.htm?kml=quillon_log_2010-pa%9F.kml`);
  await page.waitForSelector('body[data-state=shown]');
  assert.equal(await page.title(), 'Quillon 2010-pa\u017a');
  assert.deepEqual((await page.locator('#list b').allInnerTexts()).sort(), ['\u0141\u00f3d\u017a', '\u0141\u00f3d\u017a Po\u0142udnie']);
  assert.match(await page.innerText('#list'), /\u0141\u00f3d\u017a Po\u0142udnie\s+\u0141/);
}));

test('a file that is UTF-8 is read as UTF-8', () => withPage({}, async (page) => {
  site.write('test.kml', Buffer.from(kmlText('Quillon', [place({ name: '\u0141\u00f3d\u017a' })])));
  await open(page, '?kml=test.kml');
  assert.equal(await page.innerText('#list b'), '\u0141\u00f3d\u017a');
}));

test('a month whose name is not ASCII opens from a link in a page of the code page', () => withPage({}, async (page) => {
  site.write('quillon_log_2010-M\u00e4r.kml', kmlText('Quillon 2010-M\u00e4r', [place({})]));
  site.write('links.htm', `<meta charset="windows-1252"><a href="${viewer}?kml=quillon_log_2010-M\u00e4r.kml">View Map</a>`);
  await page.goto(`${server.address}links.htm`);
  await page.click('a');
  await page.waitForSelector('body[data-state=shown]');
  assert.match(page.url(), /M%E4r/);
  assert.equal(await page.title(), 'Quillon 2010-M\u00e4r');
}));

for (const scheme of ['http', 'file']) {
  test(`hostile names and notes over ${scheme}: shown as text, nothing runs, nothing is reached`, () => withPage({}, async (page, seen) => {
    const places = hostileKmlTexts.flatMap((text, i) => [
      place({ name: text, lat: String(30 + i) }), place({ country: text, lon: String(i) }), place({ name: `Site ${i}`, receptions: [[text, text, text, text]] }), place({ name: encode(text), lat: '' }),
    ]);
    writeMap(site, 'hostile.kml', kmlText(hostileKmlTexts[0], places));
    if (scheme === 'http') {
      await open(page, '?kml=hostile.kml');
    } else {
      await page.goto(onDisk('hostile.kml'));
    }
    await page.waitForSelector('body[data-state=shown]');
    for (let i = 0, rows = await page.locator('#list li').count(); i < rows; i += 3) await page.evaluate((at) => document.querySelectorAll('#list li')[at].click(), i);
    await page.evaluate(() => document.querySelectorAll('.leaflet-popup a:not(.leaflet-popup-close-button), .bait').forEach((each) => each.click()));
    await page.waitForTimeout(300);
    assert.equal(await page.locator('#list :not(li, i, b, span, em), .card :not(h2, p, div, table, thead, tbody, tr, th, td, button)').count(), 0);
    assert.equal(await page.locator('script:not(#world), iframe, object, embed, svg, video, base, link').count(), 1);
    assert.ok((await page.textContent('#list')).includes('<img src=x onerror=hostileRan("img")>'));
    assert.deepEqual(seen.outside, []);
    assert.deepEqual(seen.requests.filter((url) => !url.startsWith(server.address)), []);
  }));
}

test('hostile addresses run nothing', () => withPage({}, async (page, seen) => {
  for (const text of hostileKmlTexts.filter((_, i) => i % 4 === 3)) {
    await open(page, `?kml=${encodeURIComponent(text)}&home=${encodeURIComponent(text)}`);
    await open(page, `?kml=${encodeURIComponent(text.replace(/[/:\\]/g, ''))}.kml`);
  }
  assert.deepEqual(seen.outside, []);
}));

for (const value of [
  '../secret.kml', '..%2Fsecret.kml', '/etc/passwd.kml', 'a/b.kml', 'a%5Cb.kml', 'C:x.kml', '..', '', 'secret.txt', 'https://elsewhere.example/a.kml', '//elsewhere.example/a.kml',
  'javascript:hostileRan(1).kml', 'data:text/plain,a.kml', 'a%00.kml', 'a..kml',
]) {
  test(`the file name "${value}" is refused and not asked for`, () => withPage({}, async (page, seen) => {
    assert.equal(await open(page, `?kml=${value}`), 'explained');
    assert.match(await page.innerText('#explanation'), /The address asks for ".*", but (only the plain name of a file|the name of a file to be shown ends in ".kml")/s);
    assert.deepEqual(seen.requests.filter((url) => !url.includes(viewer) && !url.endsWith('favicon.ico')), []);
  }));
}

test('a missing file and one that is no KML are explained, and another can be chosen', () => withPage({}, async (page) => {
  assert.equal(await open(page, '?kml=missing.kml'), 'explained');
  assert.match(await page.innerText('#explanationtext'), /missing\.kml cannot be loaded: it is not on the server\./);
  site.write('junk.kml', Buffer.from([0xff, 0xfe, 0, 1, 2, 3]));
  assert.equal(await open(page, '?kml=junk.kml'), 'explained');
  assert.match(await page.innerText('#explanationtext'), /junk\.kml cannot be read as a map: there is no KML in it\./);
  await page.setInputFiles('#explanation input', site.path('quillon.kml'));
  await page.waitForSelector('body[data-state=shown]');
  assert.equal(await markers(page), '25');
}));

test('without a file name the page asks for a file', () => withPage({}, async (page) => {
  assert.equal(await open(page, ''), 'explained');
  assert.match(await page.innerText('#explanationtext'), /Drop a KML file/);
}));

test('an empty map says so', () => withPage({}, async (page) => {
  await openKml(page, []);
  assert.equal(await summary(page), 'No transmitter in this file');
}));

const onDisk = (name) => `file://${site.path(viewer)}?kml=${name}`;

test('opened from a disk it shows the map at once', () => withPage({}, async (page, seen) => {
  await page.goto(onDisk('quillon.kml'));
  await page.waitForSelector('body[data-state=shown]');
  assert.equal(await page.title(), 'Quillon Full');
  assert.equal(await markers(page), '25');
  assert.equal(await row(page, 'K\u00f6ln/Sendeturm').count(), 1);
  assert.equal(await page.locator('#explanation').isVisible(), false);
  assert.deepEqual(seen.requests, []);
}));

test('opened from a disk a month with an umlaut is shown, whichever way its link is escaped', () => withPage({}, async (page) => {
  writeMap(site, 'quillon_log_2010-M\u00e4r.kml', kmlText('Quillon 2010-M\u00e4r', [place({ name: 'K\u00f6ln' })]));
  for (const link of ['quillon_log_2010-M%E4r.kml', 'quillon_log_2010-M%C3%A4r.kml']) {
    await page.goto(onDisk(link));
    await page.waitForSelector('body[data-state=shown]');
    assert.equal(await page.title(), 'Quillon 2010-M\u00e4r');
  }
}));

for (const [what, script] of Object.entries({
  'no script': null, 'an empty script': '', 'a broken script': 'window.quillonMap = "', 'another script': 'window.other = "QUJD";', 'no text': 'window.quillonMap = 5;', 'no base64': 'window.quillonMap = "\u00e4";',
})) {
  test(`opened from a disk with ${what} beside the file it asks for the file`, async () => {
    const opened = await browser.newPage();
    if (script !== null) site.write('odd.kml.js', script);
    await opened.page.goto(onDisk(script === null ? 'missing.kml' : 'odd.kml'));
    await opened.page.waitForSelector('body[data-state=explained]');
    assert.match(await opened.page.innerText('#explanationtext'), /opened from a disk.*Drop (missing|odd)\.kml here, or choose it/s);
    await opened.close();
  });
}

test('opened from a disk junk beside the file is explained', () => withPage({}, async (page) => {
  writeMap(site, 'junk.kml', '\xff\xfe no map');
  await page.goto(onDisk('junk.kml'));
  await page.waitForSelector('body[data-state=explained]');
  assert.match(await page.innerText('#explanationtext'), /junk\.kml cannot be read as a map: there is no KML in it\./);
}));

test('a script beside a file that a server gives is not loaded', () => withPage({}, async (page, seen) => {
  site.write('served.kml', kmlText('Served', [place({})]));
  site.write('served.kml.js', 'hostileRan("served")');
  assert.equal(await open(page, '?kml=served.kml'), 'shown');
  const refused = await page.evaluate(() => new Promise((resolve) => {
    const script = document.createElement('script');
    script.addEventListener('load', () => resolve(false));
    script.addEventListener('error', () => resolve(true));
    script.src = 'served.kml.js';
    document.head.append(script);
  }));
  assert.ok(refused);
  assert.deepEqual(seen.requests.filter((url) => url.endsWith('.js')), []);
}));

test('opened from a disk without its script it takes the file by the picker', () => withPage({}, async (page, seen) => {
  await page.goto(onDisk('missing.kml'));
  await page.waitForSelector('body[data-state=explained]');
  const [chooser] = await Promise.all([page.waitForEvent('filechooser'), page.click('#explanation .button')]);
  await chooser.setFiles(site.path('quillon.kml'));
  await page.waitForSelector('body[data-state=shown]');
  assert.equal(await markers(page), '25');
  assert.equal(await page.locator('#explanation').isVisible(), false);
  assert.deepEqual(seen.requests, []);
}));

test('opened from a disk it takes the file by drop', () => withPage({}, async (page) => {
  await page.goto(onDisk('missing.kml'));
  await page.waitForSelector('body[data-state=explained]');
  const transfer = await page.evaluateHandle((text) => {
    const data = new DataTransfer();
    data.items.add(new File([Uint8Array.from(text, (character) => character.charCodeAt(0))], 'quillon.kml'));
    return data;
  }, readFileSync(site.path('quillon.kml'), 'latin1'));
  await page.dispatchEvent('#explanation', 'dragover', { dataTransfer: transfer });
  assert.ok(await page.locator('body.dropping').count());
  await page.dispatchEvent('#explanation', 'drop', { dataTransfer: transfer });
  await page.waitForSelector('body[data-state=shown]');
  assert.equal(await markers(page), '25');
  assert.equal(await row(page, 'K\u00f6ln/Sendeturm').count(), 1);
}));

async function tilePage(page, answer) {
  const tiles = [];
  await page.addInitScript(() => Object.defineProperty(Navigator.prototype, 'onLine', { get: () => true }));
  await page.context().route('https://tile.openstreetmap.org/**', (route) => {
    tiles.push(route.request().url());
    return answer ? route.fulfill({ contentType: 'image/png', body: pixel }) : route.abort();
  });
  await open(page, '?kml=quillon.kml');
  return tiles;
}

test('street tiles come only when they are asked for, and go again', () => withPage({}, async (page, seen) => {
  const tiles = await tilePage(page, true);
  await row(page, 'Navacerrada').click();
  await page.waitForTimeout(300);
  assert.deepEqual(tiles, []);
  await page.click('#tiles');
  await page.waitForSelector('.leaflet-tile-loaded');
  assert.match(tiles[0], /^https:\/\/tile\.openstreetmap\.org\/\d+\/\d+\/\d+\.png$/);
  assert.match(await page.innerText('.leaflet-control-attribution'), /OpenStreetMap/);
  assert.equal(await page.getAttribute('#tiles', 'aria-pressed'), 'true');
  await page.click('#tiles');
  assert.equal(await page.locator('.leaflet-tile').count(), 0);
  assert.equal(await page.getAttribute('#tiles', 'aria-pressed'), 'false');
  assert.doesNotMatch(await page.innerText('.leaflet-control-attribution'), /OpenStreetMap/);
  assert.deepEqual(seen.outside, []);
}));

test('street tiles that do not come are given up with a word', () => withPage({}, async (page) => {
  await tilePage(page, false);
  await page.click('#tiles');
  await page.waitForFunction(() => document.getElementById('notice').textContent !== '');
  assert.equal(await page.innerText('#notice'), 'The street map cannot be loaded.');
  assert.equal(await page.getAttribute('#tiles', 'aria-pressed'), 'false');
}));

test('offline the street map says what it needs', () => withPage({}, async (page, seen) => {
  await page.addInitScript(() => Object.defineProperty(Navigator.prototype, 'onLine', { get: () => false }));
  await open(page, '?kml=quillon.kml');
  await page.click('#tiles');
  assert.match(await page.innerText('#notice'), /needs the network/);
  assert.deepEqual(seen.outside, []);
}));

test('with a known home there are distances, and the farthest comes first when asked', () => withPage({}, async (page) => {
  await open(page, `?kml=quillon.kml&home=${home.lat},${home.lon}`);
  assert.match(await row(page, 'Langenberg').innerText(), /240 km/);
  await page.selectOption('#order', 'distance');
  assert.equal(await page.locator('#list b').first().innerText(), 'Lisboa/Monsanto');
  await open(page, '?kml=quillon.kml&home=north');
  assert.doesNotMatch(await page.innerText('#list'), / km/);
}));

test('home can be written into the page', () => withPage({}, async (page) => {
  site.write('mine.htm', Buffer.from(readFileSync(site.path(viewer), 'utf8').replace('<meta name="home" content="">', `<meta name="home" content="${home.lat},${home.lon}">`)));
  await page.goto(`${server.address}mine.htm?kml=quillon.kml`);
  await page.waitForSelector('body[data-state=shown]');
  assert.match(await row(page, 'Langenberg').innerText(), /240 km/);
}));

test('the list is searched and walked with the keyboard', () => withPage({}, async (page) => {
  await open(page, '?kml=quillon.kml');
  await page.fill('#search', 'rne');
  assert.equal(await page.innerText('#found'), '2 found');
  assert.equal(await markers(page), '2');
  await page.press('#search', 'ArrowDown');
  await page.keyboard.press('ArrowDown');
  await page.keyboard.press('Enter');
  await page.waitForSelector('.leaflet-popup .card');
  assert.equal(await page.innerText('.card h2'), 'Navacerrada');
  assert.equal(await page.locator('#list [aria-selected=true]').count(), 1);
  for (const [text, found] of [['D392', 1], ['94.1', 1], ['monte', 3], ['nowhere', 0]]) {
    await page.fill('#search', text);
    assert.equal(await page.locator('#list li:visible').count(), found, text);
  }
  await page.fill('#search', '');
  assert.equal(await markers(page), '25');
}));

// How many nodes of the page { search: text } or { click: selector } makes or takes away.
const nodesChanged = (page, act) => page.evaluate(async (what) => {
  let changed = 0;
  const observer = new MutationObserver((records) => {
    for (const { addedNodes, removedNodes } of records) changed += addedNodes.length + removedNodes.length;
  });
  observer.observe(document.body, { childList: true, subtree: true });
  if (what.click) document.querySelector(what.click).click();
  else {
    const search = document.getElementById('search');
    search.value = what.search;
    search.dispatchEvent(new Event('input'));
  }
  await new Promise((resolve) => { requestAnimationFrame(() => setTimeout(resolve, 400)); });
  observer.disconnect();
  return changed;
}, act);

test('5,000 transmitters are drawn on one canvas, and moving and searching makes no nodes for them', () => withPage({}, async (page) => {
  const places = Array.from({ length: 5000 }, (_, i) => place({
    name: `Site ${i}`, lat: String(35 + (i % 71) / 2.6), lon: String(-10 + ((i * 7) % 101) / 2.6), receptions: Array.from({ length: 6 }, (__, k) => [`0${k}/07/2010 21:34:00`, 'D395', ' WDR 5  ', '88.8']),
  }));
  await openKml(page, [place({})]);
  const nodes = () => page.locator('#map *').count();
  const nodesForOne = await nodes();
  await openKml(page, places);
  assert.equal(await markers(page), '5000');
  assert.equal(await summary(page), '5,000 transmitters \u00b7 30,000 receptions');
  // One canvas for the land, one for the transmitters; the labels of the land depend on what is in view.
  assert.equal(await page.locator('#map canvas').count(), 2);
  assert.equal(await page.locator('#map .leaflet-marker-icon, #map path').count(), 0);
  assert.ok(await nodes() < nodesForOne + 200);
  for (const act of [{ search: 'site 49' }, { search: '' }, { click: '.leaflet-control-zoom-in' }, { click: '#fit' }]) {
    const changed = await nodesChanged(page, act);
    assert.ok(changed < 500, `${changed} nodes by ${JSON.stringify(act)}`);
  }
  await page.fill('#search', 'site 4999');
  assert.equal(await markers(page), '1');
}));

test('opening and searching takes time in proportion to the transmitters', () => withPage({}, async (page) => {
  const placesOf = (count) => Array.from({ length: count }, (_, i) => place({ name: `Site ${i}`, lat: String(35 + (i % 71) / 2.6), lon: String(-10 + ((i * 7) % 101) / 2.6) }));
  // The shortest of some searches: what else the machine does only lengthens one.
  const searchTime = () => page.evaluate(() => {
    const search = document.getElementById('search');
    let shortest = Infinity;
    for (const text of ['site 1', 'site', 'site 1', 'site', 'site 1', 'site', 'site 1', 'site']) {
      const from = performance.now();
      search.value = text;
      search.dispatchEvent(new Event('input'));
      document.body.getBoundingClientRect();
      shortest = Math.min(shortest, performance.now() - from);
    }
    return shortest;
  });
  await openKml(page, placesOf(1000));
  const few = await searchTime();
  await openKml(page, placesOf(8000));
  const many = await searchTime();
  // Eight times the work; what is quadratic takes 64 times.
  assert.ok(many < 32 * Math.max(few, 1), `${few} ms for 1,000, ${many} ms for 8,000`);
}));

for (const colorScheme of ['light', 'dark']) {
  for (const [name, options] of Object.entries({ phone, desktop: { viewport: { width: 1280, height: 800 } } })) {
    test(`${colorScheme} on a ${name}: readable without scrolling sideways`, () => withPage({ ...options, colorScheme }, async (page) => {
      await openKml(page, [place({ name: 'W'.repeat(300), country: 'C'.repeat(300), receptions: [['d'.repeat(100), 'p'.repeat(100), 'r'.repeat(100), 'f'.repeat(100)]] })]);
      await clickMiddle(page);
      assert.equal(await overflow(page), 0);
      const [card, map] = [await page.locator('.leaflet-popup').boundingBox(), await page.locator('#map').boundingBox()];
      assert.ok(card.x >= map.x && card.x + card.width <= map.x + map.width);
      if (await page.locator('#panelbutton').isVisible()) await page.click('#panelbutton');
      assert.equal(await page.locator('#panel').isVisible(), true);
      assert.equal(await overflow(page), 0);
      assert.equal(await isDark(page), colorScheme === 'dark');
      assert.ok(await lowestContrast(page, 'h1, p, button, #list b, #list span, #list em, .card h2, .card td, .card th, select, .tools a') >= 4.5);
    }));
  }
}
