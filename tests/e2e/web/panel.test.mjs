// The web panel in a real browser, with a program that paints every colour and tells every touch.
import assert from 'node:assert/strict';
import { createServer } from 'node:http';
import { after, before, test } from 'node:test';
import { click, openPanel, PANEL, pixel, pixels, place, simulate, simulateOnOwnPort, startBrowser, until } from './simulated.mjs';

const WHITE = 0xFFFFFF;
let browser;

before(async () => { browser = await startBrowser(); });
after(async () => { await browser.close(); });

const follow = (strokes) => [process.env.OSTREL_PROBE, 'follow', String(strokes)];

// What the probe paints, with 8 bits a channel.
function painted(x, y) {
  const [red, green, blue] = [Math.floor(x / 10), Math.floor(y * 63 / 239), (x + y) & 31];
  return (red << 3 | red >> 2) << 16 | (green << 2 | green >> 4) << 8 | (blue << 3 | blue >> 2);
}

test('shows every pixel in its exact colour', async (t) => {
  const simulated = await simulate(t, follow(9));
  const page = await openPanel(t, browser.context, simulated);
  await until(async () => await pixel(page, 319, 239) === painted(319, 239), 'the picture is there');
  const seen = await pixels(page);
  for (let y = 0; y < PANEL.height; y++)
    for (let x = 0; x < PANEL.width; x++)
      assert.equal(seen[y * PANEL.width + x], painted(x, y), `at ${x},${y}`);
  assert.deepEqual(page.mistakes, []);
  assert.equal(await simulated.stop(), 143);
});

test('turns clicks and drags into strokes of the pen', async (t) => {
  const simulated = await simulate(t, follow(2));
  const page = await openPanel(t, browser.context, simulated);
  await click(page, 100, 50);
  await until(async () => await pixel(page, 100, 50) === WHITE, 'the touch shows');
  await page.mouse.move(...await place(page, 200, 100));
  await page.mouse.down();
  await page.mouse.move(...await place(page, 210, 110));
  await page.mouse.up();
  assert.equal(await simulated.ended, 0);
  assert.equal(simulated.output, 'down 100 50\nup\ndown 200 100\nmove 210 110\nup\n');
});

test('is crisp at every size of the window', async (t) => {
  const simulated = await simulate(t, follow(9));
  const page = await openPanel(t, browser.context, simulated);
  for (const [width, height, zoom] of [[1280, 800, 2], [1280, 860, 3], [1600, 1000, 3], [390, 700, 1]]) {
    await page.setViewportSize({ width, height });
    await until(async () => (await page.locator('#screen canvas').boundingBox()).width === zoom * 320, `${width} gives ${zoom}`);
    const box = await page.locator('#screen canvas').boundingBox();
    assert.equal(box.height, zoom * 240);
    assert.equal(box.x, Math.round(box.x));
    assert.equal(box.y, Math.round(box.y));
    if (process.env.PICTURES)
      await page.screenshot({ path: `${process.env.PICTURES}/web-panel-${width}.png` });
  }
});

test('is seen whole in a window that is smaller than the panel', async (t) => {
  const simulated = await simulate(t, follow(1));
  const page = await openPanel(t, browser.context, simulated);
  await page.setViewportSize({ width: 300, height: 200 });
  await page.waitForSelector('#screen.shrunk');
  let box;
  await until(async () => {
    box = await page.locator('#screen canvas').boundingBox();
    return box.x >= 0 && box.y >= 0 && box.x + box.width <= 300;
  }, 'the panel has shrunk into the window');
  const line = await page.locator('footer').boundingBox();
  assert.ok(line.y >= box.y + box.height && line.y + line.height <= 200, JSON.stringify(line));
  if (process.env.PICTURES)
    await page.screenshot({ path: `${process.env.PICTURES}/web-panel-300.png` });
  await click(page, 100, 50);
  assert.equal(await simulated.ended, 0);
  const [, x, y] = /^down (\d+) (\d+)\nup\n$/.exec(simulated.output); // a point of the window is more than one pixel
  assert.ok(Math.abs(x - 100) <= 1 && Math.abs(y - 50) <= 1, simulated.output);
});

test('serves several viewers at once', async (t) => {
  const simulated = await simulate(t, follow(9));
  const first = await openPanel(t, browser.context, simulated);
  const second = await openPanel(t, browser.context, simulated);
  await first.mouse.move(...await place(first, 20, 20));
  await first.mouse.down();
  await until(() => simulated.output === 'down 20 20\n', 'the first pen is down');
  await first.mouse.up();
  await until(() => simulated.output.includes('up'), 'the first pen is up');
  await click(second, 60, 60);
  await until(async () => await pixel(first, 60, 60) === WHITE, 'the first sees what the second did');
  await until(() => simulated.output.endsWith('up\n'), 'the stroke has ended');
  assert.equal(simulated.output, 'down 20 20\nup\ndown 60 60\nup\n');
});

test('lifts the pen of a viewer that goes away', async (t) => {
  const simulated = await simulate(t, follow(1));
  const page = await openPanel(t, browser.context, simulated);
  await page.mouse.move(...await place(page, 20, 20));
  await page.mouse.down();
  await until(() => simulated.output === 'down 20 20\n', 'the pen is down');
  await page.close();
  assert.equal(await simulated.ended, 0);
  assert.equal(simulated.output, 'down 20 20\nup\n');
});

test('refuses the pages of others', async (t) => {
  const simulated = await simulate(t, follow(9));
  const server = createServer((request, response) => response.end('<title>evil</title>')).listen(0, '127.0.0.1');
  t.after(() => server.close());
  const page = await browser.context.newPage();
  t.after(() => page.close());
  await page.goto(`http://127.0.0.1:${server.address().port}/`);
  const outcome = await page.evaluate((url) => new Promise((resolve) => {
    const socket = new WebSocket(url);
    socket.onopen = () => resolve('open');
    socket.onerror = () => resolve('refused');
  }), `${simulated.address.replace('http', 'ws')}panel`);
  assert.equal(outcome, 'refused');
});

test('connects again to the next simulator on its port', async (t) => {
  const first = await simulateOnOwnPort(t, follow(9));
  const page = await openPanel(t, browser.context, first);
  const { port } = new URL(first.address);
  await first.stop();
  await page.waitForSelector('#state.gone');
  const second = await simulate(t, follow(9), [`--web=${port}`]);
  await page.waitForSelector('#state.connected');
  await click(page, 100, 50);
  await until(() => second.output === 'down 100 50\nup\n', 'the new program is touched');
});
