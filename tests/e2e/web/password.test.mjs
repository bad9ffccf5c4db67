// The web panel's password in a real browser.
import assert from 'node:assert/strict';
import { rmSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import { click, openPage, pixel, simulate, simulateOnOwnPort, startBrowser, temporaryDirectory, until } from './simulated.mjs';

const WHITE = 0xFFFFFF;
const PASSWORD = 'r0ut3r!';
let browser;

before(async () => { browser = await startBrowser(); });
after(async () => { await browser.close(); });

function passwordFile(t) {
  const directory = temporaryDirectory();
  t.after(() => rmSync(directory, { recursive: true }));
  const path = join(directory, 'secret');
  writeFileSync(path, `${PASSWORD}\n`, { mode: 0o600 });
  return path;
}

// The probe behind a password, and the page that asks for it.
async function openDialog(t) {
  const secret = passwordFile(t);
  const simulated = await simulateOnOwnPort(t, [process.env.OSTREL_PROBE, 'follow', '9'], ['--password-file', secret]);
  const page = await openPage(t, browser.context, simulated);
  await page.waitForSelector('#login[open]');
  return { simulated, page, secret };
}

const isFocused = (page, selector) => page.evaluate((id) => document.activeElement === document.querySelector(id), selector);

test('a wrong password is said so and asked for again, the right one shows the panel', async (t) => {
  const { simulated, page } = await openDialog(t);
  await until(() => isFocused(page, '#password'), 'the dialog takes the keys');
  assert.equal(await page.locator('#complaint').textContent(), '');
  await page.keyboard.type('router');
  await page.keyboard.press('Enter');
  await page.waitForSelector('#complaint:has-text("Wrong password. Please try again.")');
  assert.equal(await page.locator('#password').getAttribute('aria-invalid'), 'true');
  assert.equal(await page.locator('#password').inputValue(), '');
  assert.ok(await isFocused(page, '#password'));
  assert.equal(await page.locator('#screen canvas').count(), 0);
  if (process.env.PICTURES)
    await page.screenshot({ path: `${process.env.PICTURES}/web-password-wrong.png` });

  await page.keyboard.type(PASSWORD);
  await page.keyboard.press('Enter');
  await page.waitForSelector('#state.connected');
  assert.equal(await page.locator('#login').isVisible(), false);
  await click(page, 100, 50);
  await until(async () => await pixel(page, 100, 50) === WHITE, 'the touch shows');
  await until(() => simulated.output === 'down 100 50\nup\n', 'the touch is told');
});

test('the dialog keeps the focus, and Esc leaves a page that can be gone on with', async (t) => {
  const { simulated, page } = await openDialog(t);
  await until(() => isFocused(page, '#password'), 'the dialog takes the keys');
  for (const next of ['#cancel', '#enter']) {
    await page.keyboard.press('Tab');
    assert.ok(await isFocused(page, next), next);
  }
  await page.keyboard.press('Shift+Tab');
  assert.ok(await isFocused(page, '#cancel'));
  await page.keyboard.press('Escape');
  assert.equal(await page.locator('#login').isVisible(), false);
  assert.equal(await page.locator('#state').textContent(), 'not connected');
  assert.ok(await isFocused(page, '#connect'));
  if (process.env.PICTURES)
    await page.screenshot({ path: `${process.env.PICTURES}/web-password-cancelled.png` });

  await page.keyboard.press('Enter');
  await page.waitForSelector('#login[open]');
  await page.keyboard.type(PASSWORD);
  await page.keyboard.press('Enter');
  await page.waitForSelector('#state.connected');
  assert.equal(simulated.output, '');
});

test('the next simulator on the port is entered with the same password, or asks for its own', async (t) => {
  const { simulated, page, secret } = await openDialog(t);
  await page.fill('#password', PASSWORD);
  await page.click('#enter');
  await page.waitForSelector('#state.connected');
  const port = `--web=${new URL(simulated.address).port}`;
  await simulated.stop();
  await page.waitForSelector('#state.gone');
  const second = await simulate(t, [process.env.OSTREL_PROBE, 'follow', '9'], ['--password-file', secret, port]);
  await page.waitForSelector('#state.connected');
  await second.stop();
  writeFileSync(secret, 'another\n');
  await page.waitForSelector('#state.gone');
  await simulate(t, [process.env.OSTREL_PROBE, 'follow', '9'], ['--password-file', secret, port]);
  await page.waitForSelector('#complaint:has-text("Wrong password.")');
  await page.fill('#password', 'another');
  await page.click('#enter');
  await page.waitForSelector('#state.connected');
});

test('a password that is thought about while the simulator starts anew is taken by the new one', async (t) => {
  const { simulated, page, secret } = await openDialog(t);
  const port = `--web=${new URL(simulated.address).port}`;
  await simulated.stop();
  await page.waitForFunction(() => document.querySelectorAll('#screen > *').length === 0);
  await page.fill('#password', PASSWORD);
  await simulate(t, [process.env.OSTREL_PROBE, 'follow', '9'], ['--password-file', secret, port]);
  await page.click('#enter');
  await page.waitForSelector('#state.connected');
});
