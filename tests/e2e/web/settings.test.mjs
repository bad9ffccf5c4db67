// The router's settings, used by a person with a mouse and a browser: the Wi-Fi network gets another name.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { after, before, test } from 'node:test';
import { click, openPanel, PANEL, pixels, settled, simulate, startBrowser, until } from './simulated.mjs';

let browser;

before(async () => { browser = await startBrowser(); });
after(async () => { await browser.close(); });

async function look(page, left, top, width, height) {
  const all = await pixels(page);
  const rows = [];
  for (let y = top; y < top + height; y++)
    rows.push(all.slice(y * PANEL.width + left, y * PANEL.width + left + width));
  return rows;
}

// In how many columns two looks at the same place differ.
function changedColumns(one, other) {
  return one[0].filter((_, x) => one.some((row, y) => row[x] !== other[y][x])).length;
}

async function clickAndWait(page, x, y, isSo, what) {
  await click(page, x, y);
  await until(isSo, what);
}

function setting(simulated, name) {
  const told = spawnSync(process.env.OSTREL_SIM, ['nvram', '--state', simulated.state, 'get', 'main', name, '--committed']);
  return told.stdout.toString();
}

test('clicks give the Wi-Fi network another name, which is stored', async (t) => {
  const simulated = await simulate(t, [process.env.OSTREL_SETTINGS], ['--speed', '20']);
  const page = await openPanel(t, browser.context, simulated);
  const title = async () => (await look(page, 90, 8, 190, 34)).join();
  const textBox = () => look(page, 40, 10, 280, 44);
  await until(async () => new Set((await look(page, 0, 0, 320, 240)).flat()).size > 20, 'the home page is drawn');
  await settled(page);

  const home = await title();
  await clickAndWait(page, 80, 77, async () => await title() !== home, 'the Wi-Fi page is drawn');
  await settled(page);
  const wifi = await title();
  await clickAndWait(page, 210, 63, async () => await title() !== wifi, 'the keyboard is drawn');
  await settled(page);
  const name = await textBox();
  const widerThanACursor = 6;
  await clickAndWait(page, 79, 192, async () => changedColumns(name, await textBox()) >= widerThanACursor, 'x is typed');
  await clickAndWait(page, 283, 223, async () => await title() === wifi, 'the entry is done');
  assert.equal(setting(simulated, 'WifiName'), 'Ostrel\n');
  await clickAndWait(page, 160, 218, () => setting(simulated, 'WifiName') === 'Ostrelx\n', 'the name is stored');
  await until(async () => await title() === wifi, 'the page is back');
  if (process.env.PICTURES)
    await page.screenshot({ path: `${process.env.PICTURES}/web-settings.png` });
});
