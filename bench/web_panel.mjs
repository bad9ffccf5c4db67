// What the web panel costs and how quick it is: from a press to changed pixels in Chromium and in a raw VNC viewer,
// pictures a second of an animation, and the processor's time of an idle simulator. It prints figures and never passes
// or fails; run it on a quiet machine. From the top, after `cmake --preset release && cmake --build --preset release`:
//
//     cd build/release/tests/e2e/web && npm ci --ignore-scripts && node web_panel.mjs
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { readFileSync, rmSync } from 'node:fs';
import { connect } from 'node:net';
import { loadavg } from 'node:os';
import { fileURLToPath } from 'node:url';
import { openPanel, place, simulate, startBrowser, temporaryDirectory } from './simulated.mjs';

const PRESSES = 100;
const WATCHED_S = 10;
const TICKS_PER_SECOND = 100;

const program = (name) => fileURLToPath(new URL(`../../../bin/${name}`, import.meta.url));
process.env.OSTREL_SIM ||= program('ostrel-sim');
const probe = process.env.OSTREL_PROBE || program('probe');
const sleep = (ms) => new Promise((resolve) => { setTimeout(resolve, ms); });

// What a measurement opens is closed when it is over.
async function row(name, measure) {
  const closing = [];
  const figures = await measure({ after: (close) => closing.unshift(close) });
  for (const close of closing)
    await close();
  console.log(`${name.padEnd(62)}${figures}`);
}

function medianAndMost(times) {
  const sorted = [...times].sort((a, b) => a - b);
  const at = (part) => sorted[Math.min(sorted.length - 1, Math.floor(part * sorted.length))].toFixed(1);
  return `median ${at(0.5)} ms, 95 % within ${at(0.95)} ms, of ${sorted.length}`;
}

// Seconds of processor time that a process has used.
function processorTime(pid) {
  const fields = readFileSync(`/proc/${pid}/stat`, 'utf8').replace(/.*\) /, '').split(' ');
  return (Number(fields[11]) + Number(fields[12])) / TICKS_PER_SECOND;
}

async function processorShare(pid) {
  await sleep(2000);
  const before = processorTime(pid);
  await sleep(1000 * WATCHED_S);
  return `${(100 * (processorTime(pid) - before) / WATCHED_S).toFixed(2)} % of one core`;
}

// In the page: the time from the mouse's event to the first look at which the pixel is another.
function watchPress(page, x, y) {
  return page.evaluate(([px, py]) => new Promise((resolve) => {
    const context = document.querySelector('#screen canvas').getContext('2d');
    const colour = () => context.getImageData(px, py, 1, 1).data.join();
    const before = colour();
    window.addEventListener('mousedown', () => {
      const begin = performance.now();
      const { port1, port2 } = new MessageChannel();
      port2.onmessage = () => {
        if (colour() === before)
          port1.postMessage(null);
        else
          window.took = performance.now() - begin;
      };
      port1.postMessage(null);
    }, { capture: true, once: true });
    resolve();
  }), [x, y]);
}

async function pressesInChromium(scope, browser) {
  const simulated = await simulate(scope, [probe, 'follow', '100000']);
  const page = await openPanel(scope, browser.context, simulated);
  const times = [];
  for (let i = 0; i < PRESSES; i++) {
    const [x, y] = [20 + 14 * (i % 20), 20 + 12 * Math.floor(i / 20)];
    await page.evaluate(() => { window.took = 0; });
    await watchPress(page, x, y);
    await page.mouse.move(...await place(page, x, y));
    await page.mouse.down();
    await page.waitForFunction(() => window.took > 0);
    times.push(await page.evaluate(() => window.took));
    await page.mouse.up();
    await sleep(50);
  }
  return medianAndMost(times);
}

async function picturesInChromium(scope, browser) {
  const simulated = await simulate(scope, [probe, 'animate', '16']);
  const page = await openPanel(scope, browser.context, simulated);
  await sleep(1000);
  const pictures = await page.evaluate((seconds) => new Promise((resolve) => {
    const context = document.querySelector('#screen canvas').getContext('2d');
    let [seen, frames, before] = [0, 0, ''];
    const end = performance.now() + 1000 * seconds;
    const look = () => {
      const colour = context.getImageData(0, 0, 1, 1).data.join();
      frames++;
      seen += colour === before ? 0 : 1;
      before = colour;
      if (performance.now() < end)
        requestAnimationFrame(look);
      else
        resolve([seen / seconds, frames / seconds]);
    };
    requestAnimationFrame(look);
  }), WATCHED_S);
  return `${pictures[0].toFixed(1)} a second, of ${pictures[1].toFixed(1)} that Chromium drew`;
}

// A VNC viewer that asks for raw pixels.
class Viewer {
  constructor(port) {
    this.bytes = Buffer.alloc(0);
    this.socket = connect(port, '127.0.0.1');
    this.socket.setNoDelay(true);
    this.socket.on('data', (data) => {
      this.bytes = Buffer.concat([this.bytes, data]);
      this.wake?.();
    });
  }

  async take(size) {
    while (this.bytes.length < size)
      await new Promise((resolve) => { this.wake = resolve; });
    const taken = this.bytes.subarray(0, size);
    this.bytes = this.bytes.subarray(size);
    return taken;
  }

  async begin() {
    await this.take(12);
    this.socket.write('RFB 003.008\n');
    await this.take(2);
    this.socket.write(Buffer.of(1));
    await this.take(4);
    this.socket.write(Buffer.of(1));
    await this.take((await this.take(24)).readUInt32BE(20));
    this.socket.write(Buffer.of(2, 0, 0, 1, 0, 0, 0, 0));
  }

  ask(incremental) { this.socket.write(Buffer.of(3, incremental, 0, 0, 0, 0, 1, 64, 0, 240)); }

  point(pressed, x, y) { this.socket.write(Buffer.of(5, pressed, x >> 8, x & 255, 0, y)); }

  async update() {
    const rectangles = (await this.take(4)).readUInt16BE(2);
    for (let i = 0; i < rectangles; i++) {
      const head = await this.take(12);
      await this.take(4 * head.readUInt16BE(4) * head.readUInt16BE(6));
    }
  }
}

async function pressesOverVnc(scope) {
  const simulated = await simulate(scope, [probe, 'follow', '100000']);
  const viewer = new Viewer(new URL(simulated.address).port);
  scope.after(() => viewer.socket.destroy());
  await viewer.begin();
  await sleep(500);
  viewer.ask(0);
  await viewer.update();
  const times = [];
  for (let i = 0; i < PRESSES; i++) {
    const [x, y] = [20 + 14 * (i % 20), 20 + 12 * Math.floor(i / 20)];
    viewer.ask(1);
    const begin = performance.now();
    viewer.point(1, x, y);
    await viewer.update();
    times.push(performance.now() - begin);
    viewer.ask(1);
    viewer.point(0, x, y); // the probe marks the end of a stroke, too
    await viewer.update();
    await sleep(50);
  }
  return medianAndMost(times);
}

async function idle(scope, browser) {
  const simulated = await simulate(scope, [probe, 'follow', '1']);
  if (browser)
    await openPanel(scope, browser.context, simulated);
  return processorShare(simulated.pid);
}

async function idleHeadless(scope) {
  const state = temporaryDirectory();
  const child = spawn(process.env.OSTREL_SIM, ['--headless', '--state', state, probe, 'follow', '1']);
  scope.after(async () => {
    child.kill('SIGTERM');
    await once(child, 'close');
    rmSync(state, { recursive: true });
  });
  return processorShare(child.pid);
}

const browser = await startBrowser();
console.log(`Load average ${loadavg()[0].toFixed(2)}`);
await row('press to changed pixel, Chromium', (scope) => pressesInChromium(scope, browser));
await row('press to all changed pixels, raw VNC', pressesOverVnc);
await row('pictures of an animation, Chromium', (scope) => picturesInChromium(scope, browser));
await row('ostrel-sim, nothing happens, one Chromium looks', (scope) => idle(scope, browser));
await row('ostrel-sim, nothing happens, nobody looks', (scope) => idle(scope, null));
await row('ostrel-sim, nothing happens, headless', idleHeadless);
console.log(`Load average ${loadavg()[0].toFixed(2)}`);
await browser.close();
