// The web panel on a touch screen: a finger is the pen.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { openPanel, place, simulate, startBrowser, until } from './simulated.mjs';

let browser;

before(async () => { browser = await startBrowser({ hasTouch: true, isMobile: true, viewport: { width: 390, height: 844 }, deviceScaleFactor: 3 }); });
after(async () => { await browser.close(); });

// Fingers by their places on the panel; each call tells all that are down.
async function fingers(t, page) {
  const session = await page.context().newCDPSession(page);
  return async (type, ...places) => {
    const touchPoints = [];
    for (const [id, x, y] of places) {
      const [left, top] = await place(page, x, y);
      touchPoints.push({ x: left, y: top, id });
    }
    await session.send('Input.dispatchTouchEvent', { type, touchPoints });
  };
}

async function openOnPhone(t, strokes) {
  const simulated = await simulate(t, [process.env.OSTREL_PROBE, 'follow', String(strokes)]);
  const page = await openPanel(t, browser.context, simulated);
  return { simulated, page, touch: await fingers(t, page) };
}

test('presses where the finger lands, at once, and lifts where it leaves', async (t) => {
  const { simulated, page, touch } = await openOnPhone(t, 2);
  await touch('touchStart', [1, 100, 50]);
  await until(() => simulated.output === 'down 100 50\n', 'the pen is down while the finger is');
  await touch('touchEnd');
  await until(() => simulated.output === 'down 100 50\nup\n', 'the pen is up');
  await page.touchscreen.tap(...await place(page, 200, 100));
  assert.equal(await simulated.ended, 0);
  assert.equal(simulated.output, 'down 100 50\nup\ndown 200 100\nup\n');
});

test('drags from the first pixel on', async (t) => {
  const { simulated, touch } = await openOnPhone(t, 1);
  await touch('touchStart', [1, 100, 50]);
  await until(() => simulated.output === 'down 100 50\n', 'the pen is down');
  await touch('touchMove', [1, 130, 80]);
  await until(() => simulated.output.includes('move'), 'the pen moves');
  await touch('touchMove', [1, 150, 90]);
  await touch('touchEnd');
  assert.equal(await simulated.ended, 0);
  const lines = simulated.output.trim().split('\n');
  assert.equal(lines[0], 'down 100 50');
  assert.ok(lines.includes('move 150 90'), simulated.output);
  assert.deepEqual(lines.slice(-2), ['move 150 90', 'up']);
});

test('knows one finger at a time', async (t) => {
  const { simulated, touch } = await openOnPhone(t, 1);
  await touch('touchStart', [1, 100, 50]);
  await until(() => simulated.output === 'down 100 50\n', 'the pen is down');
  await touch('touchStart', [1, 100, 50], [2, 200, 200]);
  await touch('touchMove', [1, 100, 50], [2, 210, 210]);
  await touch('touchEnd', [1, 100, 50]);
  await touch('touchEnd');
  assert.equal(await simulated.ended, 0);
  assert.equal(simulated.output, 'down 100 50\nup\n');
});

test('fits a phone, either way up', async (t) => {
  const { page } = await openOnPhone(t, 1);
  for (const [width, height, zoom] of [[390, 844, 3], [844, 390, 4]]) {
    await page.setViewportSize({ width, height });
    // Whole device pixels for each of the panel's.
    await until(async () => Math.abs((await page.locator('#screen canvas').boundingBox()).width * 3 / 320 - zoom) < 0.01, `${width} gives ${zoom}`);
    if (process.env.PICTURES)
      await page.screenshot({ path: `${process.env.PICTURES}/web-phone-${width}.png` });
  }
});
