// A headless Chromium that reaches nothing but loopback, and a watch over what a page does.
import { existsSync } from 'node:fs';
import { chromium } from 'playwright-core';

const programs = [process.env.QUILLON_CHROMIUM, '/usr/bin/chromium', '/usr/bin/chromium-browser', '/usr/bin/google-chrome'];
const flags = [
  '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run', '--disable-background-networking',
  '--disable-component-update', '--disable-sync', '--disable-dev-shm-usage', '--force-color-profile=srgb',
  '--host-resolver-rules=MAP * ~NOTFOUND, EXCLUDE 127.0.0.1',
];

/** { newPage(options), close } of a browser with a fresh profile. */
export async function startBrowser() {
  const executablePath = programs.find((path) => path && existsSync(path));
  if (!executablePath) throw new Error('no Chromium was found; install the package chromium');
  const browser = await chromium.launch({ executablePath, args: flags, headless: true });
  return {
    async newPage(options = {}) {
      const context = await browser.newContext(options);
      const page = await context.newPage();
      return { page, seen: await watch(page), close: () => context.close() };
    },
    close: () => browser.close(),
  };
}

/** What a page did that it must not do: `ran` (marks left by hostile scripts), `outside` (requests that left), `errors`. */
async function watch(page) {
  const seen = { ran: [], outside: [], errors: [], requests: [] };
  const context = page.context();
  await context.exposeFunction('hostileRan', (what) => { seen.ran.push(String(what)); });
  const watched = (each) => {
    each.on('dialog', (dialog) => {
      seen.ran.push(`dialog ${dialog.message()}`);
      // A page that goes on its way has taken its dialog along.
      dialog.dismiss().catch(() => {});
    });
    each.on('pageerror', (error) => seen.errors.push(error.message));
  };
  watched(page);
  context.on('page', watched);
  await context.route(/^https?:/, (route) => {
    const url = route.request().url();
    seen.requests.push(url);
    if (new URL(url).hostname === '127.0.0.1') return route.continue();
    seen.outside.push(url);
    return route.abort();
  });
  return seen;
}
