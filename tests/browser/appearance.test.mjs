import assert from 'node:assert/strict';

import { Manager } from './administration.mjs';
import { calendarSuite, kDesktop, kPhone } from './calendar_suite.mjs';

const visit = calendarSuite();

const kSchemes = [
  { user: 'asa', sheet: 'default.css', name: 'Default' },
  { user: 'lukasz', sheet: 'dark.css', name: 'Dark' },
  { user: 'ines', sheet: 'contrast.css', name: 'High Contrast' },
  { user: 'tomas', sheet: 'nineties.css', name: 'Nineties' },
];
const kPopup = { viewport: { width: 180, height: 180 } };
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

async function assertFits({ page }, what) {
  const width = await page.evaluate(() => document.scrollingElement.scrollWidth);
  assert.equal(width, page.viewportSize().width, what);
}

visit('the login fits a phone', { window: kPhone }, async (visitor) => {
  await visitor.open();
  await assertFits(visitor, 'login');
});

/** The texts with a contrast of less than 4.5; grounds of several colours are left out. */
const faintTexts = ({ page }) =>
  page.evaluate(() => {
    const channels = (colour) => {
      const most = colour.startsWith('color(') ? 255 : 1; // a mixed colour counts to 1 instead of 255
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

const asKind = (kind) => async (visitor) => {
  await visitor.open('?p=e');
  await visitor.fillIn({ reptype: kind });
};

const kForms = {
  'a single event': (visitor) => visitor.open('?p=e'),
  'a daily event': asKind('Daily'),
  'an event on weekdays': asKind('By Weekday'),
  'a monthly event': asKind('Monthly'),
  'a yearly event': asKind('Yearly'),
  'the recipients of a suggestion': (visitor) => visitor.open('?p=e&act=sendform'),
  'the answer to a suggestion': async (visitor) => {
    await visitor.open('?p=c&dm=month');
    const event = await visitor.page.getByTitle('Edit Event').first().evaluate(({ search }) => search);
    await visitor.open(`${event}&act=accepted`);
  },
  'the search': (visitor) => visitor.open('?p=e&act=find'),
  'found events': async (visitor) => {
    await visitor.open('?p=e&act=find');
    await visitor.fillIn({ search: 'Nordvik', date1: '3/1/2004' });
    await visitor.press('Find Events');
  },
  'no found event': async (visitor) => {
    await visitor.open('?p=e&act=find');
    await visitor.fillIn({ search: 'no such event' });
    await visitor.press('Find Events');
  },
  'the messages': (visitor) => visitor.open('?p=m'),
  'a message': (visitor) => visitor.openMessage('Thank you'),
  'a new message': (visitor) => visitor.open('?p=m&act=new'),
};

const kAdministration = {
  'the preferences': (visitor) => visitor.open('?p=p'),
  'the password': (visitor) => visitor.open('?p=p&act=login'),
  'a new group view': (visitor) => visitor.open('?p=p&act=groups'),
  'the colours of a group view': async (visitor) => {
    await visitor.open('?p=p&act=groups');
    await visitor.fillIn({ id: 'Engineering Team' });
  },
  'a user': (visitor) => new Manager(visitor, 'um').open('Daniel Kim (daniel)'),
  'the administrator': (visitor) => new Manager(visitor, 'um').open('Administrator (admin)'),
  'a group': (visitor) => new Manager(visitor, 'gm').open('Sports Club (sport)'),
  'the default scheme': (visitor) => new Manager(visitor, 'cm').open('Default (default.css)'),
  'a new event type': (visitor) => new Manager(visitor, 'tm').open(),
};

for (const { sheet, name } of kSchemes) {
  const where = { user: 'admin', window: kPhone };
  visit(`the administrator's pages are readable with ${sheet}`, where, async (visitor) => {
    const { page } = visitor;
    await visitor.open('?p=p');
    await visitor.fillIn({ css: name });
    await visitor.press('Save Changes');
    assert.equal(await page.evaluate(() => document.styleSheets[0].href.split('/').pop()), sheet);
    for (const [what, show] of Object.entries(kAdministration)) {
      await show(visitor);
      for (const window of [kDesktop, kPhone]) {
        await page.setViewportSize(window.viewport);
        await assertFits(visitor, what);
        assert.deepEqual(await faintTexts(visitor), [], what);
      }
    }
    await visitor.open('?p=c&cn=@engineeringteam');
    await visitor.open('?p=p&act=gcols');
    await page.setViewportSize({ width: 180, height: 250 });
    await assertFits(visitor, 'the colours of the members');
    assert.deepEqual(await faintTexts(visitor), []);
  });
}

for (const { user, sheet } of kSchemes) {
  visit(`every form is readable on a phone with ${sheet}`, { user, window: kPhone }, async (visitor) => {
    for (const [name, show] of Object.entries(kForms)) {
      await show(visitor);
      await assertFits(visitor, name);
      assert.deepEqual(await faintTexts(visitor), [], name);
    }
  });

  visit(`the popup shows six weeks with ${sheet}`, { user, window: kPopup }, async (visitor) => {
    await visitor.open('?p=s&sd=5/1/2004');
    const size = await visitor.page.evaluate(() => {
      const { scrollWidth, scrollHeight } = document.scrollingElement;
      return [scrollWidth, scrollHeight];
    });
    assert.deepEqual(size, [180, 180]);
    assert.deepEqual(await faintTexts(visitor), []);
  });

  visit(`every view fits a phone with ${sheet}`, { user, window: kPhone }, async (visitor) => {
    for (const query of kPages) {
      await visitor.open(query);
      await assertFits(visitor, query);
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
