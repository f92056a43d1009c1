import assert from 'node:assert/strict';
import { readFile } from 'node:fs/promises';
import { createRequire } from 'node:module';

import { kEmulatesMedia } from './browsers.mjs';
import { calendarSuite, kDesktop, kPhone } from './suite.mjs';

const visit = calendarSuite();

const kAxe = await readFile(createRequire(import.meta.url).resolve('axe-core/axe.min.js'), 'utf8');

/** The style sheets, and the scheme of the system on which each is worn. */
const kSchemes = [
  ['default.css', 'light'],
  ...(kEmulatesMedia ? [['default.css', 'dark']] : []),
  ['light.css', 'dark'],
  ['dark.css', 'light'],
  ['contrast.css', 'light'],
  ['nineties.css', 'light'],
];

/** Replaces the style sheet of the page. */
async function wear(page, sheet, system) {
  if (kEmulatesMedia) await page.emulateMediaFeatures([{ name: 'prefers-color-scheme', value: system }]);
  await page.evaluate(
    (name) =>
      new Promise((resolve, reject) => {
        const worn = document.querySelector('link[rel=stylesheet]');
        const link = worn.cloneNode();
        link.href = worn.href.replace(/[^/]+$/, name);
        link.onload = () => resolve(worn.remove());
        link.onerror = reject;
        worn.after(link);
      }),
    sheet,
  );
}

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

const find = (visitor) => visitor.press('Find Events');

/** How to reach all pages: the address of the first one, what to fill in there, and how to go on. */
const kPages = {
  asa: {
    'the month': ['?p=c&dm=month'],
    'the week': ['?p=c&dm=week'],
    'the day': ['?p=c&dm=day'],
    'a group view': ['?p=c&dm=day&cn=@engineeringteam'],
    'a single event': ['?p=e'],
    ...Object.fromEntries(
      ['Daily', 'By Weekday', 'Monthly', 'Yearly'].map((reptype) => [reptype, ['?p=e', { reptype }]]),
    ),
    'the recipients of a suggestion': ['?p=e&act=sendform'],
    'the search': ['?p=e&act=find'],
    'found events': ['?p=e&act=find', { search: 'Nordvik', date1: '3/1/2004' }, find],
    'no found event': ['?p=e&act=find', { search: 'no such event' }, find],
  },
  zoe: {
    'the messages': ['?p=m'],
    'a message': ['?p=m', {}, (visitor) => visitor.followLink('Thank you')],
    'a new message': ['?p=m&act=new'],
    'the preferences': ['?p=p'],
    'the password': ['?p=p&act=login'],
    'a new group view': ['?p=p&act=groups'],
  },
  admin: {
    'the colours of a group view': ['?p=p&act=groups', { id: 'Engineering Team' }],
    'a user': ['?p=a&act=um_list', { id: 'Daniel Kim (daniel)' }],
    'the administrator': ['?p=a&act=um_list', { id: 'Administrator (admin)' }],
    'a group': ['?p=a&act=gm_list', { id: 'Sports Club (sport)' }],
    'a scheme': ['?p=a&act=cm_list', { id: 'Dark (dark.css)' }],
    'a new event type': ['?p=a&act=tm_list'],
  },
};

for (const [user, pages] of Object.entries(kPages))
  for (const window of [kDesktop, kPhone])
    visit(`every page suits everybody: ${user}, ${window.width} pixels`, { user, window }, async (visitor) => {
      const faults = [];
      for (const [what, [query, fields = {}, next]] of Object.entries(pages)) {
        await visitor.open(query);
        await visitor.fillIn(fields);
        await next?.(visitor);
        faults.push(...(await tabFaults(visitor.page, what)), ...(await readingFaults(visitor.page, what)));
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
