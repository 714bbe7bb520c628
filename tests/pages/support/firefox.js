// A headless Firefox, spoken to by its own remote protocol: length, ":", JSON over a socket on loopback.
import { spawn } from 'node:child_process';
import { existsSync, mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { connect, createServer } from 'node:net';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { setTimeout as pause } from 'node:timers/promises';

const programs = [process.env.QUILLON_FIREFOX, '/usr/bin/firefox-esr', '/usr/bin/firefox'];
const longestStartMs = 60000;

// A proxy that is not there: nothing leaves the machine.
const preferences = (port) => ({
  'marionette.port': port, 'network.proxy.type': 1, 'network.proxy.socks': '127.0.0.1', 'network.proxy.socks_port': 9, 'network.proxy.socks_remote_dns': true,
  'app.update.enabled': false, 'browser.shell.checkDefaultBrowser': false, 'datareporting.policy.dataSubmissionEnabled': false, 'toolkit.telemetry.enabled': false,
});

async function freePort() {
  const server = createServer();
  await new Promise((resolve) => { server.listen(0, '127.0.0.1', resolve); });
  const { port } = server.address();
  await new Promise((resolve) => { server.close(resolve); });
  return port;
}

async function connected(port, child) {
  for (const end = Date.now() + longestStartMs; Date.now() < end && child.exitCode === null; await pause(100)) {
    const socket = connect(port, '127.0.0.1');
    if (await new Promise((resolve) => { socket.once('connect', () => resolve(true)).once('error', () => resolve(false)); })) return socket;
  }
  throw new Error('Firefox did not start');
}

// Sends a command, gives its answer.
function commands(socket) {
  const waiting = new Map();
  let received = Buffer.alloc(0);
  let count = 0;
  socket.on('data', (data) => {
    received = Buffer.concat([received, data]);
    for (let colon = received.indexOf(':'); colon > 0; colon = received.indexOf(':')) {
      const end = colon + 1 + Number(received.subarray(0, colon));
      if (received.length < end) return;
      const message = JSON.parse(received.subarray(colon + 1, end));
      received = received.subarray(end);
      if (!Array.isArray(message)) continue; // its greeting
      const [, id, error, result] = message;
      const { resolve, reject } = waiting.get(id);
      if (error) reject(new Error(error.message));
      else resolve(result);
    }
  });
  return (name, parameters = {}) => new Promise((resolve, reject) => {
    count += 1;
    waiting.set(count, { resolve, reject });
    const text = JSON.stringify([0, count, name, parameters]);
    socket.write(`${Buffer.byteLength(text)}:${text}`);
  });
}

/** { open(address), evaluate(script), close } of a Firefox with a fresh profile; a script ends with "return". */
export async function startFirefox() {
  const program = programs.find((path) => path && existsSync(path));
  if (!program) throw new Error('no Firefox was found; install the package firefox-esr');
  const profile = mkdtempSync(join(tmpdir(), 'quillon-firefox-'));
  const port = await freePort();
  writeFileSync(join(profile, 'user.js'), Object.entries(preferences(port)).map(([name, value]) => `user_pref("${name}", ${JSON.stringify(value)});\n`).join(''));
  const child = spawn(program, ['--headless', '--no-remote', '--marionette', '--profile', profile], { stdio: 'ignore', env: { ...process.env, HOME: profile } });
  const ended = new Promise((resolve) => { child.once('exit', resolve); });
  const close = async () => {
    child.kill('SIGKILL');
    await ended;
    rmSync(profile, { recursive: true, force: true, maxRetries: 10, retryDelay: 100 });
  };
  try {
    const socket = await connected(port, child);
    const command = commands(socket);
    await command('WebDriver:NewSession', {});
    return {
      open: (address) => command('WebDriver:Navigate', { url: address }),
      evaluate: async (script) => (await command('WebDriver:ExecuteScript', { script, args: [] })).value,
      close: async () => {
        socket.destroy();
        await close();
      },
    };
  } catch (error) {
    await close();
    throw error;
  }
}
