// The gallery, used by a person with a mouse and a browser.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { click, openPanel, PANEL, pixels, settled, simulate, startBrowser, until } from './simulated.mjs';

let browser;

before(async () => { browser = await startBrowser(); });
after(async () => { await browser.close(); });

// The pixels of a rectangle as text.
async function look(page, left, top, width, height) {
  const all = await pixels(page);
  const rows = [];
  for (let y = top; y < top + height; y++)
    rows.push(all.slice(y * PANEL.width + left, y * PANEL.width + left + width).join());
  return rows.join('\n');
}

// The page of choices has two switches, "Wi-Fi" on and "Guests" off, one 52 pixels below the other: a touch makes the
// second look like the first, another one makes it what it was.
test('a click toggles a switch, another one toggles it back', async (t) => {
  const simulated = await simulate(t, [process.env.OSTREL_GALLERY]);
  const page = await openPanel(t, browser.context, simulated);
  const wifi = () => look(page, 256, 53, 50, 34);
  const guests = () => look(page, 256, 105, 50, 34);

  await until(async () => new Set((await look(page, 0, 0, 320, 240)).split(/[,\n]/)).size > 20, 'the first page is drawn');
  await settled(page);
  const title = () => look(page, 90, 8, 190, 34);
  const gallery = await title();
  await click(page, 160, 103);
  await until(async () => await title() !== gallery, 'the page of choices is drawn');
  await settled(page);
  const off = await guests();

  await click(page, 240, 122);
  await until(async () => await guests() === await wifi(), 'the switch is on');
  await settled(page);
  await click(page, 240, 122);
  await until(async () => await guests() === off, 'the switch is off again');
  assert.deepEqual(page.mistakes, []);
  if (process.env.PICTURES)
    await page.screenshot({ path: `${process.env.PICTURES}/web-gallery.png` });
});
