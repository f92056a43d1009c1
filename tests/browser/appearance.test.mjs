import assert from 'node:assert/strict';
import { readFile } from 'node:fs/promises';
import { createRequire } from 'node:module';

import { kEmulatesMedia } from './browsers.mjs';
import { kPages, kSchemes, reach, wear } from './pages.mjs';
import { calendarSuite, kDesktop, kPhone } from './suite.mjs';

const visit = calendarSuite();

const kAxe = await readFile(createRequire(import.meta.url).resolve('axe-core/axe.min.js'), 'utf8');

/** What keeps people out, as "rule: element"; colours that users chose are left out. */
const barriers = (page) =>
  page.evaluate(async () => {
    const tags = ['wcag2a', 'wcag2aa', 'wcag21a', 'wcag21aa', 'wcag22aa'];
    const options = { runOnly: tags, resultTypes: ['violations'], elementRef: true, preload: false };
    const { violations } = await axe.run(options);
    const isChosen = (rule, element) => rule === 'color-contrast' && element.closest('[style*="background:"]');
    const faultsOf = ({ id, nodes }) =>
      nodes
        .filter(({ element }) => !isChosen(id, element))
        .map(({ html, any, all, none }) => `${id}: ${html}: ${[...any, ...all, ...none][0].message}`);
    return violations.flatMap(faultsOf);
  });

function sizes() {
  const { clientWidth, clientHeight, scrollWidth, scrollHeight } = document.scrollingElement;
  return { window: [clientWidth, clientHeight], content: [scrollWidth, scrollHeight], isPopup: !!opener };
}

/** With every style sheet the page fits the window and keeps nobody out. Resolves to the faults. */
async function readingFaults(page, what) {
  const faults = [];
  if (kEmulatesMedia) await page.evaluate(kAxe);
  for (const [sheet, system] of kSchemes) {
    await wear(page, sheet, system);
    const found = kEmulatesMedia ? await barriers(page) : [];
    const { window, content, isPopup } = await page.evaluate(sizes);
    if (content[0] > window[0] || (isPopup && content[1] > window[1])) found.push(`needs ${content} pixels`);
    faults.push(...found.map((fault) => `${what}, ${window} pixels, ${sheet} on a ${system} system: ${fault}`));
  }
  return faults;
}

/** Tab visits all controls in the order of the page, and the focus is visible. Resolves to the faults. */
async function tabFaults(page, what) {
  const selector = ':is(a[href], button, select, textarea, input:not([type=hidden])):not([tabindex="-1"])';
  const controls = await page.$$eval(selector, (all) => {
    const nameOf = (one) => one.name || one.value || one.textContent || one.querySelector('img')?.alt;
    window.visited = [];
    document.addEventListener('focusin', ({ target }) => {
      const parts = [target, ...target.querySelectorAll('img')];
      const isSeen = parts.some((part) => getComputedStyle(part).outlineStyle !== 'none');
      window.visited.push(isSeen ? nameOf(target) : `${nameOf(target)} without outline`);
    });
    all[0].focus();
    // A group of radio buttons is visited once.
    return all.filter(({ type, name }, i) => type !== 'radio' || all[i - 1].name !== name).map(nameOf);
  });
  for (let i = 1; i < controls.length; ++i) await page.keyboard.press('Tab');
  const visited = await page.evaluate(() => window.visited);
  return visited.join() === controls.join() ? [] : [`${what}: Tab visits ${visited} instead of ${controls}`];
}

for (const [user, pages] of Object.entries(kPages))
  for (const window of [kDesktop, kPhone])
    visit(`every page suits everybody: ${user}, ${window.width} pixels`, { user, window }, async (visitor) => {
      const faults = [];
      for (const [what, steps] of Object.entries(pages)) {
        await reach(visitor, steps);
        if (window === kDesktop) faults.push(...(await tabFaults(visitor.page, what)));
        faults.push(...(await readingFaults(visitor.page, what)));
      }
      assert.deepEqual(faults, []);
    });

visit('login and popups suit everybody', { user: 'asa' }, async (visitor) => {
  await visitor.open('?p=c&cn=@engineeringteam');
  const colours = await visitor.popupOf('[title="Show Colour Mapping"]');
  const faults = await readingFaults(colours, 'the colours');
  await visitor.open('?p=e');
  await visitor.fillIn({ date1: '5/1/2004' }); // a month of six weeks
  const month = await visitor.popupOf('[name=pick1]');
  faults.push(...(await readingFaults(month, 'a date')));
  await visitor.page.setViewport(kPhone);
  await visitor.open('?p=l');
  assert.deepEqual([...faults, ...(await readingFaults(visitor.page, 'the login'))], []);
});
