// A simulator with a web panel, and a browser to look at it.
import { spawn } from 'node:child_process';
import { mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { chromium } from 'playwright-core';

const PATIENCE_MS = 120000; // for busy machines

export const PANEL = { width: 320, height: 240 };

export function temporaryDirectory() {
  return mkdtempSync(join(tmpdir(), 'ostrel-web-'));
}

// Starts a program in the simulator, until the test is over. `address` is the one that it prints, `output` grows with
// what the program says, `ended` gives the exit status, `state` is its state directory.
export async function simulate(test, program, options = []) {
  const state = temporaryDirectory();
  const patient = { ...process.env, OSTREL_TOUCH_STALE_MS: '86400000' }; // no stroke is old on a slow machine
  const child = spawn(process.env.OSTREL_SIM, ['--web', '--state', state, ...options, ...program], { env: patient });
  const simulated = { pid: child.pid, state, address: '', output: '', errors: '', ended: null, stop: null };
  simulated.ended = new Promise((resolve) => child.on('close', (status, signal) => resolve(status ?? signal)));
  simulated.stop = () => {
    child.kill('SIGTERM');
    return simulated.ended;
  };
  test.after(async () => {
    await simulated.stop();
    rmSync(state, { recursive: true });
  });
  child.stdout.on('data', (data) => { simulated.output += data; });
  await new Promise((resolve, reject) => {
    child.stderr.on('data', (data) => {
      simulated.errors += data;
      const found = /the panel is at (\S+)/.exec(simulated.errors);
      if (found) {
        [, simulated.address] = found;
        resolve();
      }
    });
    child.on('close', () => reject(new Error(simulated.errors)));
  });
  return simulated;
}

// The same on a port that no other test takes when it is free for a moment: not the usual one, nor of the kernel's choice.
export async function simulateOnOwnPort(test, program, options = []) {
  for (;;) {
    const port = 20000 + Math.floor(Math.random() * 12000);
    try {
      return await simulate(test, program, [`--web=${port}`, ...options]);
    } catch (error) {
      if (!error.message.includes('is taken'))
        throw error;
    }
  }
}

// `device` is what the window is like, in Playwright's words.
export async function startBrowser(device = { viewport: { width: 1280, height: 800 } }) {
  const profile = temporaryDirectory();
  const context = await chromium.launchPersistentContext(profile, {
    executablePath: process.env.CHROMIUM || '/usr/bin/chromium',
    headless: true,
    ...device,
    args: ['--headless', '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run',
      '--disable-background-networking', '--disable-component-update', '--disable-sync'],
  });
  return {
    context,
    close: async () => {
      await context.close();
      rmSync(profile, { recursive: true, force: true });
    },
  };
}

// Opens the panel's page, until the test is over. A browser that hesitates for long is taken for a viewer: what it could
// not read then is read once more.
export async function openPage(test, context, simulated) {
  const page = await context.newPage();
  page.setDefaultTimeout(PATIENCE_MS);
  test.after(() => page.close());
  page.mistakes = [];
  page.on('console', (message) => { if (message.type() === 'error') page.mistakes.push(message.text()); });
  page.on('pageerror', (error) => page.mistakes.push(String(error)));
  let failed = 0;
  page.on('requestfailed', () => { failed++; });
  for (let tries = 1; ; tries++) {
    failed = 0;
    page.mistakes.length = 0;
    try {
      await page.goto(simulated.address);
      if (failed === 0 || tries === 5)
        return page;
    } catch (error) {
      if (tries === 5 || !/Timeout|ERR_/.test(String(error)))
        throw error;
    }
  }
}

// The same, and waits for its first picture.
export async function openPanel(test, context, simulated) {
  const page = await openPage(test, context, simulated);
  await page.waitForSelector('#state.connected');
  await page.waitForSelector('#screen canvas');
  return page;
}

// The whole panel as the browser has it: 0xRRGGBB, row by row.
export async function pixels(page) {
  return page.evaluate(() => {
    const canvas = document.querySelector('#screen canvas');
    const data = canvas.getContext('2d').getImageData(0, 0, canvas.width, canvas.height).data;
    const colours = new Array(canvas.width * canvas.height);
    for (let i = 0; i < colours.length; i++)
      colours[i] = data[4 * i] << 16 | data[4 * i + 1] << 8 | data[4 * i + 2];
    return colours;
  });
}

export async function pixel(page, x, y) {
  return (await pixels(page))[y * PANEL.width + x];
}

// Waits until `isSo()` is true.
export async function until(isSo, what, timeoutMs = PATIENCE_MS) {
  const end = Date.now() + timeoutMs;
  while (!await isSo()) {
    if (Date.now() > end)
      throw new Error(`waited in vain until ${what}`);
    await new Promise((resolve) => { setTimeout(resolve, 10); });
  }
}

// Waits until the panel has not changed for a while: the program is done with what it was doing.
export async function settled(page) {
  let before = '';
  await until(async () => {
    const last = before;
    await new Promise((resolve) => { setTimeout(resolve, 400); });
    before = (await pixels(page)).join();
    return before === last;
  }, 'the panel is at rest');
}

// Where a pixel of the panel is in the window.
export async function place(page, x, y) {
  const box = await page.locator('#screen canvas').boundingBox();
  return [box.x + (x + 0.5) * box.width / PANEL.width, box.y + (y + 0.5) * box.height / PANEL.height];
}

export async function click(page, x, y) {
  await page.mouse.click(...await place(page, x, y), { delay: 30 });
}
