import assert from 'node:assert/strict';

import { calendarSuite } from './calendar_suite.mjs';

const visit = calendarSuite();

const kViews = [
  { view: 'Month', captions: ['FEBRUARY 2004', 'MARCH 2004', 'APRIL 2004'] },
  { view: 'Week', captions: ['WEEK 11 - MAR 2004', 'WEEK 12 - MAR 2004', 'WEEK 13 - MAR 2004'] },
  { view: 'Day', captions: ['SUNDAY, MARCH 14, 2004', 'MONDAY, MARCH 15, 2004', 'TUESDAY, MARCH 16, 2004'] },
];

for (const { view, captions } of kViews) {
  visit(`${view}: the arrows lead there and back, today leads home`, { user: 'jurgen' }, async (visitor) => {
    const [earlier, now, later] = captions;
    const grid = visitor.page.locator('.background');
    await visitor.choose({ view });
    const before = await grid.innerText();
    for (const [button, caption] of [
      [`Previous ${view}`, earlier],
      [`Next ${view}`, now],
      [`Next ${view}`, later],
      [`Previous ${view}`, now],
    ]) {
      await visitor.pressButton(button);
      assert.equal(await visitor.caption(), caption, button);
    }
    assert.equal(await grid.innerText(), before);

    await visitor.open('?cd=12/31/2004');
    await visitor.pressButton('Today (3/15/2004)');
    assert.equal(await visitor.caption(), now);
    assert.equal(await grid.innerText(), before);
  });
}

visit('day and week numbers lead to their day and week', { user: 'jurgen' }, async (visitor) => {
  const { page } = visitor;
  await visitor.follow(() => page.getByTitle('Show Week 10', { exact: true }).click());
  assert.equal(await visitor.caption(), 'WEEK 10 - MAR 2004');
  const days = await page.locator('a.daynumber').allTextContents();
  assert.deepEqual(days, ['1', '2', '3', '4', '5', '6', '7']);

  await visitor.follow(() => page.locator('a.daynumber', { hasText: /^4$/ }).click());
  assert.equal(await visitor.caption(), 'THURSDAY, MARCH 4, 2004');
});

visit('only the day that it is looks like today', { user: 'jurgen' }, async (visitor) => {
  for (const view of ['Month', 'Week']) {
    await visitor.choose({ view });
    assert.deepEqual(await visitor.page.locator('.today a.daynumber').allTextContents(), ['15'], view);
  }
});

const kChoices = [
  { date: '3/31/2004', calendar: '[Engineering]', view: 'Week', caption: 'WEEK 14 - MAR/APR 2004' },
  { date: '12/30/2004', calendar: 'Priya Raman', view: 'Week', caption: 'WEEK 53 - DEC 2004/JAN 2005' },
  { date: '2/29/2004', calendar: "-Who's Where-", view: 'Day', caption: 'SUNDAY, FEBRUARY 29, 2004' },
  { date: '1/31/2004', calendar: 'Jürgen Weiß', view: 'Month', caption: 'JANUARY 2004' },
];

visit('the selection row chooses what is shown, and shows it', { user: 'jurgen' }, async (visitor) => {
  const chosen = () =>
    visitor.page.evaluate(() => {
      const { cd, cn, dm } = document.forms.acForm;
      return [cd.value, cn.selectedOptions[0].text, dm.selectedOptions[0].text];
    });
  for (const { date, calendar, view, caption } of kChoices) {
    await visitor.choose({ date, calendar, view });
    assert.equal(await visitor.caption(), caption);
    assert.equal(await visitor.calendarTitle(), calendar.replace(/^[[-]|[\]-]$/g, ''));
    assert.deepEqual(await chosen(), [date, calendar, view]);
  }
});

visit('Enter in the date field goes to that date', { user: 'jurgen' }, async (visitor) => {
  await visitor.page.fill('[name=cd]', '2004-07-04');
  await visitor.follow(() => visitor.page.press('[name=cd]', 'Enter'));
  assert.equal(await visitor.caption(), 'JULY 2004');
  assert.equal(await visitor.page.inputValue('[name=cd]'), '7/4/2004');
});

visit('what is no date is said so, and the date stays', { user: 'jurgen' }, async (visitor) => {
  for (const date of ['2/30/2004', '15.', "'tomorrow'"]) {
    await visitor.choose({ date });
    assert.deepEqual(visitor.takeAlerts(), [`${date} is not a valid date.\n`]);
    assert.equal(await visitor.caption(), 'MARCH 2004');
    assert.equal(await visitor.page.inputValue('[name=cd]'), '3/15/2004');
  }
});

const kToolbar = [
  'Previous Month',
  'Today (3/15/2004)',
  'Next Month',
  'New Event',
  'Find Event',
  'Message List',
  'Preferences',
  'Administration',
];

visit('Tab goes through the toolbar, Enter presses a button', { user: 'admin' }, async (visitor) => {
  const { keyboard } = visitor.page;
  const focused = () => visitor.page.evaluate(() => document.activeElement.querySelector('img')?.alt);
  const passed = [];
  while (passed.length < kToolbar.length) {
    await keyboard.press('Tab');
    passed.push((await focused())?.replace(/ \(\d+ New\)$/, ''));
  }
  assert.deepEqual(passed, kToolbar);

  while (passed.pop() !== 'Next Month') await keyboard.press('Shift+Tab');
  assert.equal(await focused(), 'Next Month');
  await visitor.follow(() => keyboard.press('Enter'));
  assert.equal(await visitor.caption(), 'APRIL 2004');
});
