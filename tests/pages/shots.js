// Writes pictures of the filled pages, on a desktop and a phone, light and dark: node shots.js DIRECTORY [SITE]
// SITE is the "html" folder of an export; without it a sample is pictured.
import { mkdirSync, readFileSync } from 'node:fs';
import { join } from 'node:path';
import { startBrowser } from './support/browser.js';
import { home, writeSample } from './support/sample.js';
import { createSite, serve } from './support/site.js';

const [, , target, exported] = process.argv;
if (!target) throw new Error('usage: node shots.js DIRECTORY [SITE]');
mkdirSync(target, { recursive: true });

const site = exported ? { directory: exported, path: (name) => join(exported, name), remove() {} } : createSite();
if (!exported) writeSample(site);
const server = await serve(site);
const browser = await startBrowser();
const sizes = { desktop: { viewport: { width: 1280, height: 800 } }, phone: { viewport: { width: 390, height: 780 }, hasTouch: true, isMobile: true, deviceScaleFactor: 2 } };
const map = `quillon_mapview.htm?kml=quillon.kml${exported ? '' : `&home=${home.lat},${home.lon}`}`;
// The newest month that has a map.
const [, month] = /(quillon_log_[^"]*\.htm)">View Log<(?:(?!View Log).)*View Map/s.exec(readFileSync(site.path('quillon_logindex.htm'), 'latin1'));

async function chooseStation(page, name) {
  if (await page.locator('#panelbutton').isVisible()) await page.click('#panelbutton');
  await page.locator('#list li', { hasText: name }).click();
  await page.waitForSelector('.leaflet-popup .card');
}

const shots = {
  index: { address: 'quillon_logindex.htm' },
  month: { address: month },
  map: { address: map },
  popup: { address: map, act: (page) => chooseStation(page, 'Navacerrada') },
  list: { address: map, act: (page) => page.locator('#panelbutton').evaluate((button) => button.click()) },
  refused: { address: 'quillon_mapview.htm?kml=../secret.kml' },
  disk: { address: `file://${site.path('quillon_mapview.htm')}?kml=quillon.kml` },
  nomap: { address: `file://${site.path('quillon_mapview.htm')}?kml=missing.kml` },
};

for (const [size, options] of Object.entries(sizes)) {
  for (const colorScheme of ['light', 'dark']) {
    const { page, close } = await browser.newPage({ ...options, colorScheme });
    for (const [name, { address, act }] of Object.entries(shots)) {
      await page.goto(new URL(address, server.address).href);
      if (address.startsWith('quillon_mapview')) await page.waitForSelector('body[data-state]');
      if (act) await act(page);
      await page.waitForTimeout(400);
      await page.screenshot({ path: join(target, `${name}-${size}${colorScheme === 'dark' ? '-dark' : ''}.png`) });
    }
    await close();
  }
}
const { page } = await browser.newPage({ viewport: { width: 1030, height: 720 } });
for (const name of ['index', 'month']) {
  await page.goto(new URL(shots[name].address, server.address).href);
  await page.emulateMedia({ media: 'print' });
  await page.screenshot({ path: join(target, `${name}-print.png`) });
}
await browser.close();
await server.close();
site.remove();
