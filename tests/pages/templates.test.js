// The index and month page templates, filled as the web page export fills them.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { after, before, test } from 'node:test';
import { startBrowser } from './support/browser.js';
import { isDark, lowestContrast, overflow } from './support/checks.js';
import { hostileRefresh, hostileTexts } from './support/hostile.js';
import { sourcePath } from './support/paths.js';
import { writeSample } from './support/sample.js';
import { createSite, fillIndex, fillLog, indexRow, logRow, serve } from './support/site.js';

const index = 'quillon_logindex.htm';
const month = 'quillon_log_2010-Jul.htm';
// The links of the index lead nowhere on paper.
const printedColumns = {
  [index]: ['Month', 'MS', 'Es', 'Tropo', 'Other', 'Total'],
  [month]: ['Date/Time', 'PI Code', 'Freq', 'RDS Name', 'Country', 'Transmitter', 'Dist', 'Power', 'Notes', 'Prop'],
};
const templates = { 'quillon_index.template': ['CALLSIGN', 'TOTAL', 'VERSION', 'GENERATED', 'RAWDATA'], 'quillon_log.template': ['MONTHYEAR', 'RAWDATA'] };
const cells = (changes) => Object.values({
  date: '05-Jul-2010 21:34', pi: 'D392', freq: '87.6', rds: 'WDR 2', country: 'D', transmitter: 'Langenberg', dist: '240.1', power: '100', notes: '', prop: 'Es', ...changes,
});

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
  } finally {
    await opened.close();
  }
}

for (const [name, placeholders] of Object.entries(templates)) {
  const text = readFileSync(sourcePath(`data/${name}`), 'latin1');

  test(`${name}: its placeholders, the rows on a line of their own inside a table body`, () => {
    assert.deepEqual([...new Set(text.match(/\$\w+/g))].sort(), placeholders.map((each) => `$${each}`).sort());
    assert.equal(text.split('$RAWDATA').length, 2);
    assert.match(text, /<tbody>\n\$RAWDATA\n<\/tbody>/);
  });

  test(`${name}: ASCII in the 8-bit code page of the export, no script, and a policy that lets none run`, () => {
    assert.doesNotMatch(text, /[^\n\x20-\x7e]/);
    assert.match(text, /^<!DOCTYPE html>\n<html lang="en">\n<head>\n<meta charset="windows-1252">\n/);
    assert.doesNotMatch(text, /<script|javascript:|\son\w+=/i);
    assert.match(text, /content="default-src 'none'; style-src 'unsafe-inline'; base-uri 'none'; form-action 'none'"/);
    assert.ok(text.indexOf('Content-Security-Policy') < text.indexOf('<style>'));
  });
}

const samples = {
  'index with months': fillIndex({}, [indexRow({ year: 2010, month: 'Jul', ms: 0, es: 8, tropo: 3, other: 1, total: 12, map: true })]),
  'index without months': fillIndex({ CALLSIGN: '' }, []),
  'month with receptions': fillLog('Jul-2010', [logRow(cells({ transmitter: 'R&D <K\u00f6ln>', notes: 'one\r\ntwo' })), logRow(cells({ pi: '', rds: '' }))]),
  'month without receptions': fillLog('M\u00e4r-2010', []),
};
for (const [name, html] of Object.entries(samples)) {
  test(`${name}: valid HTML`, () => {
    const tidy = spawnSync('tidy', ['-quiet', '-errors', '--char-encoding', 'win1252', '--drop-empty-elements', 'no'], { input: Buffer.from(html, 'latin1') });
    assert.equal(tidy.error, undefined, 'tidy is needed for this test');
    assert.equal(tidy.stderr.toString(), '');
    assert.equal(tidy.status, 0);
  });
}

test('the index shows call-sign, total, time and version, and links to every log and map', () => withPage({}, async (page, seen) => {
  await page.goto(server.address + index);
  assert.equal(await page.title(), 'ONL 4711 FM DX log');
  const text = await page.locator('body').innerText();
  for (const part of ['ONL 4711', '812 receptions', 'Generated 05/07/2010 21:34:00 by Quillon V1.0.0']) assert.ok(text.includes(part), part);
  const links = await page.locator('a').evaluateAll((all) => all.map((link) => link.getAttribute('href')));
  assert.equal(links[0], 'quillon_mapview.htm?kml=quillon.kml');
  assert.deepEqual(links.slice(1, 3), [month, 'quillon_mapview.htm?kml=quillon_log_2010-Jul.kml']);
  assert.deepEqual(await page.locator('th').allInnerTexts(), ['Month', 'Log', 'MS', 'Es', 'Tropo', 'Other', 'Total', 'Map']);
  assert.deepEqual(await page.locator('tbody tr').first().locator('td').allInnerTexts(), ['Jul-2010', 'View Log', '14', '61', '9', '3', '87', 'View Map']);
  await page.click(`a[href="${month}"]`);
  assert.equal(await page.title(), 'FM DX log Jul-2010');
  await page.click('nav a');
  assert.equal(page.url(), server.address + index);
  assert.deepEqual(seen.errors, []);
}));

test('the month page shows ten columns, bytes of the code page and both lines of a note', () => withPage({}, async (page) => {
  site.write('bytes.htm', fillLog('M\u00e4r-2010', [logRow(cells({ country: '\u00d6', rds: '\x80uro', transmitter: 'K\u00f6ln & Bonn', notes: 'one\r\ntwo' }))]));
  await page.goto(`${server.address}bytes.htm`);
  assert.equal(await page.title(), 'FM DX log M\u00e4r-2010');
  assert.deepEqual(await page.locator('th').allInnerTexts(), ['Date/Time', 'PI Code', 'Freq', 'RDS Name', 'Country', 'Transmitter', 'Dist', 'Power', 'Notes', 'Prop']);
  assert.deepEqual(await page.locator('tbody td').allInnerTexts(), [
    '05-Jul-2010 21:34', 'D392', '87.6', '\u20acuro', '\u00d6', 'K\u00f6ln & Bonn', '240.1', '100', 'one\ntwo', 'Es',
  ]);
}));

// Touches and clicks everything that invites it. A blocked navigation leaves nothing to wait for, so all goes in one step.
async function provoke(page) {
  const baits = await page.evaluate(() => {
    const all = [...document.querySelectorAll('.bait')];
    for (const bait of all) {
      bait.dispatchEvent(new MouseEvent('mouseover', { bubbles: true }));
      bait.click();
    }
    return all.length;
  });
  assert.ok(baits > 0);
  await page.waitForTimeout(500);
}

const hostileRows = hostileTexts.flatMap((text) => [logRow(cells({ rds: text })), logRow(cells({ notes: text })), logRow(cells({ country: text, transmitter: text }))]);
const hostileMonths = hostileTexts.map((text, i) => indexRow({ year: 2010, month: 'Jul', ms: i, es: text, tropo: 0, other: 2, total: text, map: true }));
const hostilePages = { 'month page': () => fillLog('Jul-2010', hostileRows), index: () => fillIndex({ CALLSIGN: hostileTexts.join(' '), GENERATED: hostileTexts[0] }, hostileMonths) };

for (const [name, make] of Object.entries(hostilePages)) {
  for (const scheme of ['http', 'file']) {
    test(`${name} over ${scheme}: hostile names and notes run nothing, load nothing and send nothing`, () => withPage({}, async (page, seen) => {
      site.write('hostile.htm', make());
      const address = scheme === 'http' ? `${server.address}hostile.htm` : `file://${site.path('hostile.htm')}`;
      await page.goto(address);
      await provoke(page);
      assert.deepEqual(seen.ran, []);
      assert.deepEqual(seen.outside, []);
      assert.deepEqual(seen.requests.filter((url) => url !== address && url !== `${server.address}favicon.ico`), []);
      assert.equal(page.url(), address);
    }));
  }
}

test('a refresh in a note leads nowhere and is read as its letters', () => withPage({}, async (page, seen) => {
  const refreshing = fillLog('Jul-2010', [logRow(cells({ notes: hostileRefresh }))]);
  site.write('refresh.htm', refreshing);
  await page.goto(`${server.address}refresh.htm`);
  await page.waitForTimeout(500);
  assert.deepEqual(seen.outside, []);
  assert.equal(await page.innerText('tbody td:nth-child(9)'), hostileRefresh);
  site.write('refresh.htm', refreshing.replace('&lt;MeTa', '<MeTa'));
  await page.goto(`${server.address}refresh.htm`);
  await page.waitForTimeout(500);
  assert.deepEqual(seen.outside, ['https://elsewhere.example/refresh']);
  assert.deepEqual(seen.ran, []);
}));

test('the same hostile month page runs and reaches out once the policy is gone', () => withPage({}, async (page, seen) => {
  site.write('unguarded.htm', hostilePages['month page']().replace(/<meta http-equiv="Content-Security-Policy".*\r\n/, ''));
  await page.goto(`${server.address}unguarded.htm`);
  await page.waitForTimeout(300);
  assert.ok(seen.ran.length > 0);
  assert.ok(seen.outside.length > 0);
}));

const long = 'W'.repeat(400);
for (const [name, html] of Object.entries({
  index: () => fillIndex({ CALLSIGN: `CALL${long}` }, Array.from({ length: 30 }, () => indexRow({ year: 2010, month: 'Jul', ms: 1234, es: 12345, tropo: 1234, other: 1234, total: 32498, map: true }))),
  'month page': () => fillLog('Jul-2010', [cells({ notes: long, rds: long, transmitter: long, country: long }), ...Array.from({ length: 60 }, () => cells({}))].map(logRow)),
})) {
  for (const colorScheme of ['light', 'dark']) {
    for (const width of [320, 390, 700, 961, 1280]) {
      test(`${name}, ${colorScheme}, ${width} pixels wide: readable without scrolling sideways`, () => withPage({ colorScheme, viewport: { width, height: 700 } }, async (page) => {
        site.write('wide.htm', html());
        await page.goto(`${server.address}wide.htm`);
        assert.equal(await overflow(page), 0);
        assert.equal(await isDark(page), colorScheme === 'dark');
        assert.ok(await lowestContrast(page, 'h1, h1 small, p, a, td, th, footer, nav a') >= 4.5);
      }));
    }
  }
}

test('headings stay in sight while a long month is scrolled', () => withPage({}, async (page) => {
  await page.goto(server.address + month);
  await page.mouse.wheel(0, 900);
  await page.waitForFunction(() => scrollY > 500);
  assert.equal(await page.locator('th').first().evaluate((th) => th.getBoundingClientRect().top), 0);
}));

test('on paper there are black words on white, headings on every sheet and no links to press', () => withPage({ colorScheme: 'dark', viewport: { width: 1030, height: 700 } }, async (page) => {
  await page.emulateMedia({ media: 'print', colorScheme: 'dark' });
  for (const name of [index, month]) {
    await page.goto(server.address + name);
    assert.equal(await isDark(page), false);
    assert.equal(await page.locator('thead').evaluate((head) => getComputedStyle(head).display), 'table-header-group');
    assert.equal(await page.locator('nav, .map').first().isVisible(), false);
    const printed = await page.locator('th').evaluateAll((all) => all.filter((th) => th.checkVisibility()).map((th) => th.innerText));
    assert.deepEqual(printed, printedColumns[name]);
    assert.equal(await page.locator('tbody tr').first().locator('td').evaluateAll((all) => all.filter((td) => td.checkVisibility()).length), printed.length);
    assert.equal(await overflow(page), 0);
    assert.ok((await page.pdf({ preferCSSPageSize: true })).length > 10000);
  }
}));
