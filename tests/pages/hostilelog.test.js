// A log of which every text is a try to attack who reads it, exported by the program's own code and read in a browser.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { copyFileSync, mkdtempSync, readdirSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { createServer } from 'node:net';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import { startBrowser } from './support/browser.js';
import { sourcePath } from './support/paths.js';
import { tries } from './support/tries.js';

const count = 500;
const supplied = ['quillon_index.template', 'quillon_log.template', 'quillon_mapview.htm'];
let directory;
let browser;
let strangers; // a server for each try: those that somebody connects to are noted
const connected = [];
const away = (i) => `http://127.0.0.1:${strangers[i].address().port}`;

// What a spreadsheet would take for a formula, and what looks like one and is a number.
const formulas = ['=HYPERLINK("http://away.example","x")', '+1+1', '@SUM(1,2)', '-2+3', '-2', '  =1', '"=1"'];

// One reception a month, so that what a try hides is hidden on a page of its own; the first month has one more, because
// the pages leave out a month of which the log's first reception is the only one.
function hostileLog(texts) {
  return 'D3C3|05/01/1970 21:34:00|Es|87.6|Bilbao|E||RNE_1|10|812.4|||\r\n' + texts.map((text, i) => {
    const month = `${String((i % 12) + 1).padStart(2, '0')}/${1970 + Math.floor(i / 12)}`;
    return `${[text, `05/${month} 21:34:00`, text, text, text, text, text, text, text, text, text, text].join('|')}|\r\n`;
  }).join('');
}

before(async () => {
  strangers = await Promise.all(Array.from({ length: count }, (_, i) => new Promise((resolve) => {
    const server = createServer((socket) => {
      connected.push(i);
      socket.on('error', () => {});
      socket.destroy();
    });
    server.listen(0, '127.0.0.1', () => resolve(server));
  })));
  const texts = [...tries(count, away), ...formulas];
  directory = mkdtempSync(join(tmpdir(), 'quillon-hostile-'));
  for (const name of supplied) copyFileSync(sourcePath(`data/${name}`), join(directory, name));
  writeFileSync(join(directory, 'RDSLog.log'), hostileLog(texts), 'latin1');
  writeFileSync(join(directory, 'tx.lst'), texts.map((text) => `${text}|${text}|43.26|-2.93||\r\n`).join(''), 'latin1');
  const run = spawnSync(process.env.QUILLON_EXPORTALL, [directory]);
  assert.equal(run.error, undefined);
  assert.equal(run.stderr.toString(), '');
  browser = await startBrowser();
});
after(async () => {
  await browser?.close();
  for (const server of strangers ?? []) server.close();
  if (directory) rmSync(directory, { recursive: true, force: true });
});

// Touches and clicks what invites it, and gives what was started a moment.
async function provoke(page) {
  await page.evaluate(() => {
    for (const bait of document.querySelectorAll('.bait')) {
      bait.dispatchEvent(new MouseEvent('mouseover', { bubbles: true }));
      bait.dispatchEvent(new MouseEvent('click', { bubbles: true, cancelable: true }));
    }
  });
  await page.waitForTimeout(30);
}

/** Opens the pages one after the other, some at a time: { wrong, connected } the pages, and the tries by which a server was reached. A page
 * is wrong, too, when it has an element that no policy holds back and that would load or lead away later. */
async function read(addresses) {
  const wrong = [];
  const left = [...addresses];
  connected.length = 0;
  await Promise.all(Array.from({ length: 4 }, async () => {
    const { page, seen, close } = await browser.newPage();
    for (let address = left.pop(); address; address = left.pop()) {
      await page.goto(address);
      await provoke(page);
      // What would act later than anybody waits here.
      const planted = await page.locator('meta[http-equiv="refresh" i], iframe, frame').count();
      const asked = seen.requests.splice(0).filter((url) => !url.startsWith('file:'));
      const ran = seen.ran.splice(0);
      const [where] = page.url().split('#');
      if (ran.length + asked.length + planted || where !== address) wrong.push({ address, ran, asked, where, planted });
    }
    await page.waitForTimeout(200);
    await close();
  }));
  return { wrong, connected: [...new Set(connected)] };
}

const nothing = { wrong: [], connected: [] };
const pages = () => readdirSync(join(directory, 'html')).filter((name) => name.endsWith('.htm'));

test(`the ${count} pages of a hostile log: no script runs, nothing is reached, nothing leads away`, async () => {
  const months = pages().filter((name) => name.startsWith('quillon_log_'));
  assert.equal(months.length, count + formulas.length);
  assert.deepEqual(await read(months.map((name) => `file://${join(directory, 'html', name)}`)), nothing);
});

test('its index, its page of what is shown, and its maps', async () => {
  // One map takes as long as ten pages: all of them are looked at when that is wanted.
  const every = process.env.QUILLON_EVERY_MAP ? 1 : 10;
  const maps = readdirSync(join(directory, 'html')).filter((name) => name.endsWith('.kml')).filter((_, i) => i % every === 0);
  assert.ok(maps.length >= count / every);
  assert.deepEqual(await read([
    `file://${join(directory, 'html', 'quillon_logindex.htm')}`, `file://${join(directory, 'shown.html')}`,
    ...maps.map((name) => `file://${join(directory, 'html', 'quillon_mapview.htm')}?kml=${name}`),
  ]), nothing);
});

test('the page of what is shown has every try as it is written', async () => {
  const { page, close } = await browser.newPage();
  await page.goto(`file://${join(directory, 'shown.html')}`);
  const letters = (text) => text.replace(/[\x00-\x20\ufffd]/g, '').slice(0, 60);
  const cells = new Set((await page.locator('tbody td').allTextContents()).map(letters));
  for (const text of tries(count, away)) {
    assert.ok(cells.has(letters(text)), text);
  }
  await close();
});

test('the watch sees what these tests look for', async () => {
  const open = join(directory, 'open.htm');
  writeFileSync(open, `<script>hostileRan('open')</script><iframe src="${away(7)}/"></iframe>`);
  const seen = await read([`file://${open}`]);
  assert.deepEqual(seen.wrong[0].ran, ['open']);
  assert.deepEqual(seen.connected, [7]);
});

test('a spreadsheet takes no cell for a formula', () => {
  const csv = readFileSync(join(directory, 'shown.csv'), 'utf8');
  assert.doesNotMatch(csv, /(^|,)"?[=+@]/m);
  assert.doesNotMatch(csv, /(^|,)"?-(?!\d+(\.\d+)?"?(,|$))/m);
  for (const formula of formulas.slice(0, 4)) {
    const quoted = /[",]/.test(formula) ? `"'${formula.replaceAll('"', '""')}"` : `'${formula}`;
    assert.ok(csv.includes(`,${quoted},`), quoted);
  }
});
