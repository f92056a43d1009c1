import assert from 'node:assert/strict';

import { Manager } from './administration.mjs';
import { calendarSuite } from './calendar_suite.mjs';

const visit = calendarSuite();

const kPages = {
  'the preferences': (visitor) => visitor.open('?p=p'),
  'the password': (visitor) => visitor.open('?p=p&act=login'),
  'a new group view': (visitor) => visitor.open('?p=p&act=groups'),
  'the colours of a group view': async (visitor) => {
    await visitor.open('?p=p&act=groups');
    await visitor.fillIn({ id: "Who's Where" });
  },
  'a user': (visitor) => new Manager(visitor, 'um').open('Daniel Kim (daniel)'),
  'the administrator': (visitor) => new Manager(visitor, 'um').open('Administrator (admin)'),
  'a group': (visitor) => new Manager(visitor, 'gm').open('Sports Club (sport)'),
  'a colour scheme': (visitor) => new Manager(visitor, 'cm').open('Dark (dark.css)'),
  'a new event type': (visitor) => new Manager(visitor, 'tm').open(),
};

/** All that can be used on the page, in its order; of a choice only what is chosen. */
const controlsOf = ({ page }) =>
  page.locator('a, select, input:not([type=hidden])').evaluateAll((controls) =>
    controls
      .filter(({ type, checked }) => type !== 'radio' || checked)
      .map((control) => control.name || control.value || control.textContent || control.firstChild.alt),
  );

/** What has the focus, and whether one can see that. */
const focusOf = ({ page }) =>
  page.evaluate(() => {
    const control = document.activeElement;
    const image = control.querySelector('a > img, :scope > img');
    const hasOutline = (element) => getComputedStyle(element).outlineStyle !== 'none';
    return {
      name: control.name || control.value || control.textContent || image.alt,
      isVisible: hasOutline(control) || (image !== null && hasOutline(image)),
    };
  });

visit('Tab goes through all of a page, and one sees where it is', { user: 'admin' }, async (visitor) => {
  for (const [what, show] of Object.entries(kPages)) {
    await show(visitor);
    const controls = await controlsOf(visitor);
    const passed = [];
    while (passed.length < controls.length) {
      await visitor.page.keyboard.press('Tab');
      const { name, isVisible } = await focusOf(visitor);
      assert.ok(isVisible, `no outline around ${name} of ${what}`);
      passed.push(name);
    }
    assert.deepEqual(passed, controls, what);
  }
});

async function tabTo(visitor, name) {
  for (let tabs = 0; tabs < 40; ++tabs) {
    await visitor.page.keyboard.press('Tab');
    if ((await focusOf(visitor)).name === name) return;
  }
  assert.fail(`Tab does not come to ${name}`);
}

visit('the preferences are set with the keyboard alone', { user: 'asa' }, async (visitor) => {
  const { keyboard } = visitor.page;
  await tabTo(visitor, 'Preferences');
  await visitor.follow(() => keyboard.press('Enter'));
  for (const [name, ...keys] of [
    ['mode', 'w'],
    ['weekend', 'f', 'Shift+ArrowDown'],
    ['clock', 'ArrowUp'],
    ['dayend', 'End'],
    ['css', 'ArrowDown'],
  ]) {
    await tabTo(visitor, name);
    for (const key of keys) await keyboard.press(key);
  }
  await tabTo(visitor, 'Save Changes');
  await visitor.follow(() => keyboard.press('Enter'));
  await visitor.open('?p=p');
  assert.deepEqual(await visitor.filledIn(), {
    mode: 'Week',
    firstday: 'Monday',
    weekend: ['Friday', 'Saturday'],
    clock: '12-hour clock',
    daybegin: '08:00 AM',
    dayend: '11:00 PM',
    css: 'Dark',
  });
});

visit('a user is found, renamed and removed with the keyboard alone', { user: 'admin' }, async (visitor) => {
  const { keyboard } = visitor.page;
  const find = async (letter) => {
    await tabTo(visitor, 'id');
    await visitor.follow(() => keyboard.press(letter));
  };
  const press = async (button) => {
    await tabTo(visitor, button);
    await visitor.follow(() => keyboard.press('Space'));
  };
  await tabTo(visitor, 'Administration');
  await visitor.follow(() => keyboard.press('Enter'));
  await find('w');
  await tabTo(visitor, 'name');
  await keyboard.type('Xaver');
  await tabTo(visitor, 'hide');
  await keyboard.press('ArrowUp');
  await press('Save');
  await find('x');
  const { id, name, hide } = await visitor.filledIn();
  assert.deepEqual({ id, name, hide }, { id: 'Xaver (walter)', name: 'Xaver', hide: 'Visible' });
  await press('Delete');
  const labels = await new Manager(visitor, 'um').labels();
  assert.ok(!labels.some((label) => label.includes('walter')));
});
