// The pages of the program in a real browser.

import assert from 'node:assert/strict';
import { execFileSync, spawn } from 'node:child_process';
import { mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import { chromium } from 'playwright-core';
import { list } from './list.js';

const program = process.env.LARKSTONE;
const folder = mkdtempSync(join(tmpdir(), 'larkstone-pages-'));
let browser;

before(async () => {
  browser = await chromium.launch({ executablePath: process.env.CHROMIUM, args: ['--no-sandbox'] });
});
after(async () => {
  await browser.close();
  rmSync(folder, { recursive: true });
});

function written(name, text) {
  const path = join(folder, name);
  writeFileSync(path, text);
  return path;
}

// Opens a page and fails the test for whatever its scripts throw or ask the network for.
async function opened(t, url, options = {}) {
  const page = await browser.newPage({ locale: 'en-GB', viewport: { width: 1280, height: 900 }, ...options });
  const complaints = [];
  page.on('pageerror', error => complaints.push(String(error)));
  page.on('console', message => message.type() === 'error' && complaints.push(message.text()));
  page.on('dialog', dialog => complaints.push('dialog ' + dialog.message()));
  if (url.startsWith('file:')) {
    page.on('request', request => request.url() !== url.split('#')[0] &&
      !request.url().startsWith('data:') && complaints.push('asked for ' + request.url()));
  }
  t.after(async () => {
    await page.close();
    assert.deepEqual(complaints, []);
  });
  await page.goto(url);
  return page;
}

function report(name, text, ...options) {
  const page = join(folder, name + '.html');
  execFileSync(program, ['report', '-q', written(name + '.xml', text), '-o', page, ...options]);
  return 'file://' + page;
}

const texts = locator => locator.allTextContents();

// By time: Ada 5:00, Bo 5:10, Cy 5:20; on the first leg Cy, Bo, Ada. Di misses 32.
const race = list('Spring', {
  H21: [
    { name: 'Ada', club: 'B', legs: [100, 100, 100] },
    { name: 'Bo', club: 'C', start: 60, legs: [90, 110, 110] },
    { name: 'Cy', club: 'A', start: 120, legs: [80, 120, 120] },
    { name: 'Di', club: 'A', start: 180, legs: [95, null, 200], status: 'MissingPunch' },
  ],
  D21: [{ name: 'Eva', legs: [200, 200, 200] }],
});

test('a class is shown, sorted by any heading, and its runners are drawn', async t => {
  const page = await opened(t, report('race', race));
  const names = page.locator('.splits .name');
  assert.equal(await page.title(), 'Spring');
  assert.deepEqual(await texts(page.locator('nav button')), ['H214 runners', 'D211 runner']);
  await page.locator('nav button').last().click();
  assert.deepEqual(await texts(names), ['Eva']);
  await page.locator('nav button').first().focus();
  await page.keyboard.press('Enter');
  assert.deepEqual(await texts(names), ['Ada', 'Bo', 'Cy', 'Di']);
  assert.equal(await page.locator('nav :focus').textContent(), 'H214 runners');
  assert.deepEqual(await texts(page.locator('.splits tbody tr:nth-child(5) .result')), ['', 'mp']);

  const order = async tooltip => {
    await page.locator(`.sort[title="${tooltip}"]`).click();
    return (await texts(names)).join(' ');
  };
  assert.equal(await order('Sort by leg time to control 1'), 'Cy Bo Di Ada');
  assert.equal(await order('Sort by leg time to control 1'), 'Ada Di Bo Cy');
  assert.equal(await order('Sort by total time at control 2'), 'Ada Bo Cy Di');
  assert.equal(await order('Sort by club'), 'Cy Di Ada Bo');
  await page.keyboard.press('Enter');
  assert.equal(await page.locator('th[aria-sort=descending] :focus').getAttribute('title'), 'Sort by club');
  assert.equal(await order('Sort by name'), 'Ada Bo Cy Di');

  assert.equal(await page.locator('#chart path').count(), 3);
  const di = page.locator('.splits tbody tr', { hasText: 'Di' });
  await di.locator('.clock').click();
  assert.equal(await page.locator('#chart path').count(), 4);
  await di.focus();
  await page.keyboard.press('Space');
  assert.equal(await di.getAttribute('aria-selected'), 'false');
  await page.getByRole('button', { name: 'Choose none' }).click();
  assert.equal(await page.locator('#chart path').count(), 0);

  await page.getByRole('button', { name: 'Cy', exact: true }).click();
  assert.equal(await page.locator('dialog h2').textContent(), 'Cy');
  assert.match(await page.locator('dialog tbody tr').first().textContent(), /^S-1 \(31\)1:201\+0:00/);
  await page.keyboard.press('Escape');
  assert.equal(await page.locator('dialog').isVisible(), false);
});

test('search finds classes and runners, and the language can be changed', async t => {
  const page = await opened(t, report('search', race, '--language', 'fi'));
  assert.equal(await page.locator('html').getAttribute('lang'), 'fi');
  await page.locator('#language').selectOption('de');
  assert.equal(await page.locator('.splits .who').first().textContent(), 'NameVerein');
  await page.locator('#search').fill('cy');
  await page.locator('nav button').click();
  assert.equal(await page.locator('dialog h2').textContent(), 'Cy');
  await page.keyboard.press('Escape');
  assert.equal(await page.locator('#content h2').textContent(), 'H21');
  await page.locator('#search').fill('nobody');
  assert.equal(await page.locator('nav').textContent(), 'Nichts gefunden');
});

test('texts of the list stay texts', async t => {
  const hostile = ['</script><script>window.hit = 1</script>', '"><img src=x onerror=window.hit=1>',
    "javascript:window.hit=1//'", '<!--<script>', '{{7*7}} & "quotes"'];
  const page = await opened(t, report('hostile', list(hostile[0], {
    [hostile[1]]: hostile.map((name, i) => ({ name, club: name, legs: [100 + i, 100] })),
  })));
  assert.equal(await page.locator('h1').textContent(), hostile[0]);
  assert.equal(await page.locator('#content h2').textContent(), hostile[1]);
  assert.deepEqual(await texts(page.locator('.splits .name')), hostile);
  await page.locator('.splits .name').nth(1).click();
  assert.equal(await page.locator('dialog h2').textContent(), hostile[1]);
  assert.equal(await page.evaluate(() => window.hit), undefined);
});

test('a class of a thousand keeps to the rows that are seen', async t => {
  const runners = Array.from({ length: 1000 }, (_, i) => ({ name: `R${i}`, legs: [1000 - i, 100 + 2 * i, 60] }));
  const page = await opened(t, report('thousand', list('Large', { H21: runners })));
  const shown = page.locator('.splits tbody tr:not(.gap)');
  assert.ok(await shown.count() < 150);
  assert.equal(await page.locator('.splits .name').first().textContent(), 'R0');
  for (const [part, seen] of [[0.5, 'R505'], [0.52, 'R525'], [0.49, 'R495'], [1, 'R999'], [0, 'R0']]) {
    await page.locator('.scroll').evaluate((box, to) => { box.scrollTop = to * box.scrollHeight; }, part);
    await page.getByRole('button', { name: seen, exact: true }).waitFor();
    const numbers = (await texts(page.locator('.splits .name'))).map(name => Number(name.slice(1)));
    assert.deepEqual(numbers, numbers.map((_, i) => numbers[0] + i));
  }
  await page.locator('.sort[title="Sort by leg time to control 1"]').click();
  await page.getByRole('button', { name: 'R999', exact: true }).waitFor();
  assert.equal(await page.locator('.splits .name').first().textContent(), 'R999');
  await page.emulateMedia({ media: 'print' });
  await page.evaluate(() => window.dispatchEvent(new Event('beforeprint')));
  assert.equal(await shown.count(), 1000);
});

test('nothing sticks out on a phone, by day and by night', async t => {
  for (const colorScheme of ['light', 'dark']) {
    const page = await opened(t, report('phone', race), { viewport: { width: 390, height: 844 }, colorScheme });
    assert.equal(await page.evaluate(() => document.documentElement.scrollWidth), 390);
  }
});

test('paper has room for all legs, under their headings', async t => {
  const legs = Array.from({ length: 40 }, (_, i) => 60 + i);
  const page = await opened(t, report('paper', list('Long', { H21: [{ name: 'Ada', legs }] })),
    { viewport: { width: 720, height: 900 } });
  await page.emulateMedia({ media: 'print' });
  const edges = cells => page.locator(cells).evaluateAll(all => all.map(one => one.getBoundingClientRect())
    .map(box => [Math.round(box.left), Math.round(box.right)]));
  const cells = await edges('.splits tbody tr:not(.gap) td');
  assert.equal(cells.length, 45);
  assert.deepEqual(await edges('.splits th'), cells);
  assert.ok(cells.every(([left, right]) => left >= 0 && right <= 720));
});

test('the service gives pages whose links sort, and refuses what it has not got', async t => {
  const server = spawn(program, ['serve', '--port', '0', written('served.xml', race)]);
  t.after(() => server.kill());
  const root = await new Promise(resolve => server.stderr.on('data', text =>
    resolve(/http:\S+\/(?= )/.exec(text)[0])));
  const status = async path => (await fetch(root + path)).status;
  const page = await opened(t, root + 'table?category=H21');
  const names = () => texts(page.locator('tr[id$="_0"] td:nth-child(2)'));
  assert.deepEqual(await names(), ['Ada', 'Bo', 'Cy', 'Di']);
  await page.locator('a[title="Sort by leg time to control 1"]').click();
  assert.deepEqual(await names(), ['Cy', 'Bo', 'Di', 'Ada']);
  const cell = page.locator('tr[id="1_0"] td').nth(1);
  const colour = () => cell.evaluate(element => getComputedStyle(element).backgroundColor);
  const plain = await colour();
  await cell.hover();
  assert.notEqual(await colour(), plain);

  const analysis = await (await fetch(root + 'api/analysis?category=D21')).json();
  assert.equal(analysis.courses[0].runners[0].name, 'Eva');
  assert.equal((await (await fetch(root + 'api/event')).json()).categories.length, 2);
  assert.match(await (await fetch(root)).text(), /<title>Spring<\/title>/);
  for (const path of ['table?category=H20', 'table', 'nothing', 'api/analysis?category=h21', '../etc/passwd',
    'api', '%2e%2e/%2e%2e/etc/passwd']) {
    assert.equal(await status(path), 404, path);
  }
  for (const path of ['table?category=H21&sortBy=x', 'table?category=H21&sortBy=30', '?a=1',
    'table?category=H21&legNo=3', 'table?category=H21&legNo=-2', 'table?category=H21&language=xx',
    'table?category=H21&category=D21', 'api/event?x']) {
    assert.equal(await status(path), 400, path);
  }
  assert.equal((await fetch(root, { method: 'POST', body: 'x' })).ok, false);
});
