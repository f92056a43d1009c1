import assert from 'node:assert/strict';

import { calendarSuite, kPhone } from './calendar_suite.mjs';

const visit = calendarSuite();

const kSchemes = [
  { user: 'asa', sheet: 'default.css' },
  { user: 'lukasz', sheet: 'dark.css' },
  { user: 'ines', sheet: 'contrast.css' },
  { user: 'tomas', sheet: 'nineties.css' },
];
const kPages = ['?p=c&dm=month', '?p=c&dm=week', '?p=c&dm=day', '?p=c&dm=day&cn=@engineeringteam'];

visit('every colour scheme is a look of its own, and all its images load', {}, async (visitor) => {
  const looks = new Set();
  for (const { user, sheet } of kSchemes) {
    await visitor.logIn(user);
    await visitor.open('?p=c&dm=month');
    const { loaded, look, brokenImages } = await visitor.page.evaluate(() => {
      const { backgroundColor, color, fontFamily } = getComputedStyle(document.body);
      return {
        loaded: [...document.styleSheets].map(({ href }) => href.split('/').pop()),
        look: [backgroundColor, color, fontFamily].join(),
        brokenImages: [...document.images].filter((image) => !image.naturalWidth).map((image) => image.src),
      };
    });
    assert.deepEqual([loaded, brokenImages], [[sheet], []]);
    looks.add(look);
  }
  assert.equal(looks.size, kSchemes.length);
});

async function assertFitsPhone({ page }, what) {
  const width = await page.evaluate(() => document.scrollingElement.scrollWidth);
  assert.equal(width, kPhone.viewport.width, what);
}

visit('the login fits a phone', { window: kPhone }, async (visitor) => {
  await visitor.open();
  await assertFitsPhone(visitor, 'login');
});

for (const { user, sheet } of kSchemes) {
  visit(`every view fits a phone with ${sheet}`, { user, window: kPhone }, async (visitor) => {
    for (const query of kPages) {
      await visitor.open(query);
      await assertFitsPhone(visitor, query);
    }
  });
}

visit('paper shows the calendar without what can only be clicked', { user: 'asa' }, async (visitor) => {
  const { page } = visitor;
  const visible = async (selector) => {
    const found = await page.locator(selector).all();
    assert.ok(found.length > 0, selector);
    return (await Promise.all(found.map((element) => element.isVisible()))).filter(Boolean).length;
  };
  const clickable = '.plain a, .plain img, [name=cd], [name=cn], [name=dm], [type=button]';
  for (const query of kPages.slice(0, 3)) {
    await page.emulateMedia({ media: 'screen' });
    await visitor.open(query);
    assert.ok((await visible(clickable)) > 10, query);
    await page.emulateMedia({ media: 'print' });
    assert.equal(await visible(clickable), 0, query);
    assert.equal(await visible('.calname, .caltitle'), 2, query);
    assert.ok((await visible('a[title="Edit Event"]')) > 0, query);
  }
});
