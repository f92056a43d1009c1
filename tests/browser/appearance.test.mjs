import assert from 'node:assert/strict';

import { calendarSuite, kDesktop, kPhone } from './suite.mjs';

const visit = calendarSuite();

const kSheets = ['default.css', 'dark.css', 'contrast.css', 'nineties.css'];

/** Replaces the style sheet of the page. */
const wear = (page, sheet) =>
  page.evaluate(
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

/** The texts with a contrast below 4.5; backgrounds with several colours are skipped. */
const faintTexts = (page) =>
  page.evaluate(() => {
    const channels = (colour) => {
      const most = colour.startsWith('color(') ? 255 : 1; // components of color() range to 1 instead of 255
      return colour.match(/[\d.]+/g).map((channel) => channel * most);
    };
    const light = (colour) => {
      const [red, green, blue] = channels(colour).map((channel) => {
        const part = channel / 255;
        return part <= 0.04045 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4;
      });
      return 0.2126 * red + 0.7152 * green + 0.0722 * blue + 0.05;
    };
    const groundOf = (element) => {
      const { backgroundColor, backgroundImage } = getComputedStyle(element);
      if (backgroundImage !== 'none') return undefined;
      if (channels(backgroundColor)[3] !== 0) return backgroundColor;
      return element.parentElement ? groundOf(element.parentElement) : 'rgb(255, 255, 255)';
    };
    const texts = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
    const shown = new Set(document.querySelectorAll('input:not([type=hidden]), select, textarea'));
    while (texts.nextNode()) if (texts.currentNode.data.trim()) shown.add(texts.currentNode.parentElement);
    return [...shown]
      .filter((element) => element.checkVisibility() && element.nodeName !== 'OPTION')
      .map((element) => ({ element, ground: groundOf(element), colour: getComputedStyle(element).color }))
      .filter(({ ground, colour }) => {
        const [less, more] = [light(ground ?? colour), light(colour)].sort((one, other) => one - other);
        return ground && more / less < 4.5;
      })
      .map(({ element, ground, colour }) => `${element.value ?? element.innerText}: ${colour} on ${ground}`);
  });

/** With every style sheet the page fits the width of the window and its texts have enough contrast. */
async function assertReadable(page, what) {
  for (const sheet of kSheets) {
    await wear(page, sheet);
    const width = await page.evaluate(() => document.scrollingElement.scrollWidth);
    assert.equal(width, page.viewportSize().width, `${what} with ${sheet}`);
    assert.deepEqual(await faintTexts(page), [], `${what} with ${sheet}, ${width} pixels wide`);
  }
}

/** Tab visits all controls in the order of the page, and the focus is visible. */
async function assertTabs(page, what) {
  const controls = await page.evaluate(() => {
    window.nameOf = (one) => one.name || one.value || one.textContent || one.querySelector('img')?.alt;
    return [...document.querySelectorAll('a[href], select, textarea, input:not([type=hidden])')]
      .filter(({ type, name }, i, all) => type !== 'radio' || all[i - 1].name !== name) // a group of radio buttons is one tab stop
      .map(window.nameOf)
      .filter((name) => name);
  });
  const passed = [];
  for (let tabs = 0; passed.at(-1) !== controls.at(-1) && tabs < 200; ++tabs) {
    await page.keyboard.press('Tab');
    const [name, outlines] = await page.evaluate(() => {
      const parts = [document.activeElement, ...document.activeElement.querySelectorAll('img')];
      return [window.nameOf(parts[0]), parts.map((part) => getComputedStyle(part).outlineStyle)];
    });
    assert.ok(outlines.some((style) => style !== 'none'), `no outline around ${name} of ${what}`);
    if (name) passed.push(name);
  }
  assert.deepEqual(passed, controls, what);
}

/** Every label belongs to a field, and every image is there. */
async function assertComplete(page, what) {
  const faults = await page.evaluate(() => [
    ...[...document.querySelectorAll('label')].filter(({ control }) => !control).map((label) => label.innerText),
    ...[...document.images].filter((image) => !image.naturalWidth).map(({ src }) => src),
  ]);
  assert.deepEqual(faults, [], what);
}

/** How to reach all pages: the address of the first one, what to fill in there, and the button or link to follow. */
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
    'found events': ['?p=e&act=find', { search: 'Nordvik', date1: '3/1/2004' }, 'Find Events'],
    'no found event': ['?p=e&act=find', { search: 'no such event' }, 'Find Events'],
  },
  zoe: {
    'the messages': ['?p=m'],
    'a message': ['?p=m', {}, 'Thank you'],
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
    'the default scheme': ['?p=a&act=cm_list', { id: 'Default (default.css)' }],
    'a new event type': ['?p=a&act=tm_list'],
  },
};

for (const [user, pages] of Object.entries(kPages)) {
  visit(`every page is readable in every scheme and window: ${user}`, { user, window: kPhone }, async (visitor) => {
    const { page } = visitor;
    for (const [what, [query, fields = {}, next]] of Object.entries(pages)) {
      await visitor.open(query);
      await visitor.fillIn(fields);
      if (next) await visitor.follow(() => page.locator(`a:text-is("${next}"), [value="${next}"]`).last().click());
      await assertTabs(page, what);
      await assertComplete(page, what);
      for (const { viewport } of [kDesktop, kPhone]) {
        await page.setViewportSize(viewport);
        await assertReadable(page, what);
      }
    }
  });
}

visit('login and popups fit their windows', { user: 'asa' }, async (visitor) => {
  const { page } = visitor;
  const show = async (query, width, height) => {
    await page.setViewportSize({ width, height });
    await visitor.open(query);
    await assertReadable(page, query);
  };
  await visitor.open('?p=c&cn=@engineeringteam');
  await show('?p=p&act=gcols', 180, 250);
  await show('?p=s&sd=5/1/2004', 180, 180); // a month of six weeks
  assert.equal(await page.evaluate(() => document.scrollingElement.scrollHeight), 180);
  await show('?p=l', kPhone.viewport.width, kPhone.viewport.height);
});
