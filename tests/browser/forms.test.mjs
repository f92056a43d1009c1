import assert from 'node:assert/strict';

import { calendarSuite } from './calendar_suite.mjs';

const visit = calendarSuite();

/** What has the focus: the name of a field, the label of a button, the text of an image. */
const focused = (page) =>
  page.evaluate(() => {
    const { name, value, firstChild } = document.activeElement;
    return name || value || firstChild?.alt;
  });

const kPlaces = [
  'View Calendar',
  'New Event',
  'Find Event',
  'title',
  'reptype',
  'date1',
  'pick1',
  'time1',
  'time2',
  'date2',
  'pick2',
  'type',
  'addinfo',
  'repday',
  'repweekends',
  'calendar',
  'private',
  'Save',
  'Send',
];

const kTyped = {
  title: 'Stocktaking',
  date1: '3/2/2004',
  time1: '08:30',
  date2: '5/2/2004',
  addinfo: 'Bring a pen',
};
const kPressed = {
  type: ['Space', 'ArrowRight'],
  repday: ['ArrowDown', 'ArrowDown', 'Shift+ArrowDown'],
  repweekends: ['ArrowDown', 'ArrowDown'],
  private: ['Space'],
};

visit('an event is made with the keyboard alone, from top to bottom', { user: 'asa' }, async (visitor) => {
  const { page } = visitor;
  await visitor.open('?p=e');
  await page.focus('[name=reptype]');
  await visitor.follow(() => page.keyboard.type('Monthly'));

  const passed = [];
  while (passed.length < kPlaces.length) {
    await page.keyboard.press('Tab');
    const place = await focused(page);
    passed.push(place);
    if (kTyped[place]) await page.keyboard.type(kTyped[place]);
    for (const key of kPressed[place] ?? []) await page.keyboard.press(key);
  }
  assert.deepEqual(passed, kPlaces);
  assert.deepEqual(await visitor.filledIn(), {
    ...kTyped,
    reptype: 'Monthly',
    time2: '- - - -',
    type: 'Phone Call',
    repday: ['2.', '3.'],
    repweekends: 'Move forward',
    calendar: 'Åsa Lindqvist',
    private: true,
  });

  await page.keyboard.press('Shift+Tab');
  await visitor.follow(() => page.keyboard.press('Enter'));
  assert.deepEqual(await visitor.daysOf('08:30 Stocktaking'), [2, 3]);
});

visit('the popup of a date opens and is used with the keyboard', { user: 'asa' }, async (visitor) => {
  const { page } = visitor;
  await visitor.open('?p=e&act=find');
  await page.focus('[name=pick1]');
  const [popup] = await Promise.all([page.waitForEvent('popup'), page.keyboard.press('Enter')]);
  await popup.waitForLoadState();
  const isAt = (day) => popup.evaluate((text) => document.activeElement.textContent === text, day);
  for (let tabs = 0; tabs < 10 && !(await isAt('5')); ++tabs) await popup.keyboard.press('Tab');
  const closed = popup.waitForEvent('close');
  popup.keyboard.press('Enter').catch(() => {}); // nothing is left where the key could come up
  await closed;
  assert.equal((await visitor.filledIn()).date1, '3/5/2004');
});

const kLabels = [
  {
    query: '?p=e',
    kind: 'By Weekday',
    fields: {
      'Event Title:': 'title',
      'Repeat:': 'reptype',
      'Date:': 'date1',
      'End Date:': 'date2',
      'Comments:': 'addinfo',
      'Weekday(s):': 'repweekday',
      'Frequency:': 'frequency',
      'Calendar:': 'calendar',
      Private: 'private',
    },
  },
  { query: '?p=e', kind: 'Monthly', fields: { 'Day(s):': 'repday', 'Skip weekends': 'repweekends' } },
  { query: '?p=e&act=sendform', fields: { 'Recipient(s):': 'vastaanottaja' } },
  {
    query: '?p=e&act=find',
    fields: {
      'Search For:': 'search',
      'Calendar To Search:': 'cal',
      'Type Of Event:': 'reptype',
      'Starting from:': 'date1',
    },
  },
];

visit('a click on a label goes to its field', { user: 'asa' }, async (visitor) => {
  for (const { query, kind, fields } of kLabels) {
    await visitor.open(query);
    if (kind) await visitor.fillIn({ reptype: kind });
    for (const [label, field] of Object.entries(fields)) {
      await visitor.page.getByText(label, { exact: true }).click();
      assert.equal(await focused(visitor.page), field, label);
    }
  }
});
