import assert from 'node:assert/strict';

import { calendarSuite } from './calendar_suite.mjs';

const visit = calendarSuite();

const kEvents = [
  {
    what: 'a single day',
    fields: { reptype: 'No Repeat', date1: '3/10/2004' },
    days: { '3/1/2004': [10], '4/1/2004': [] },
  },
  {
    what: 'every day of a stretch',
    fields: { reptype: 'Daily', date1: '3/30/2004', date2: '4/2/2004' },
    days: { '3/1/2004': [30, 31], '4/1/2004': [1, 2] },
  },
  {
    what: 'two weekdays every second week, counted from a Wednesday',
    fields: {
      reptype: 'By Weekday',
      date1: '3/10/2004',
      date2: '4/9/2004',
      repweekday: ['Tuesday', 'Thursday'],
      frequency: 'Every 2 weeks',
    },
    days: { '3/1/2004': [11, 16, 25, 30], '4/1/2004': [8] },
  },
  {
    what: 'the second Friday of the month',
    fields: {
      reptype: 'By Weekday',
      date1: '3/1/2004',
      date2: '5/31/2004',
      repweekday: ['Friday'],
      frequency: '2nd in month',
    },
    days: { '3/1/2004': [12], '4/1/2004': [9] },
  },
  {
    what: 'days of the month, moved back from a weekend and from the end of a short month',
    fields: {
      reptype: 'Monthly',
      date1: '3/1/2004',
      date2: '5/31/2004',
      repday: ['6.', '31.'],
      repweekends: 'Move back',
    },
    days: { '3/1/2004': [5, 31], '4/1/2004': [6, 30], '2/1/2004': [] },
  },
  {
    what: 'a day of the year, moved forward from Saturday and from Sunday',
    fields: { reptype: 'Yearly', date1: '3/13/2003', date2: '3/31/2005', repweekends: 'Move forward' },
    days: { '3/1/2003': [13], '3/1/2004': [15], '3/1/2005': [14], '3/1/2006': [] },
  },
];

visit('a new event of each kind stands on its days', { user: 'asa' }, async (visitor) => {
  for (const { what, fields, days } of kEvents) {
    await visitor.pressButton('New Event');
    await visitor.fillIn({ title: what, ...fields });
    await visitor.press('Save');
    for (const [date, expected] of Object.entries(days)) {
      await visitor.choose({ date });
      assert.deepEqual(await visitor.daysOf(what), expected, `${what}: ${date}`);
    }
  }
});

visit('the popup writes into the date field that it was opened from', { user: 'asa' }, async (visitor) => {
  await visitor.open('?p=e');
  await visitor.fillIn({ title: 'Regatta', reptype: 'Daily' });
  await visitor.pickDate(2, { months: 2, day: 4 });
  await visitor.pickDate(1, { day: 31 });
  const { title, date1, date2 } = await visitor.filledIn();
  assert.deepEqual([title, date1, date2], ['Regatta', '3/31/2004', '5/4/2004']);
});

const kTyped = {
  title: `Zoë's "quiet" <img src=x onerror=alert(1)> & 🎻`,
  date1: '3/18/2004',
  time1: '14:15',
  time2: '15:45',
  type: 'Meeting',
  addinfo: `"That's" </textarea><script>alert(2)</script>\nsecond line 🎷`,
  private: true,
};
const kWeekly = { date2: '6/30/2004', repweekday: ['Monday', 'Sunday'], frequency: '3rd in month' };
const kMonthly = { repday: ['1.', '15.', '31.'], repweekends: 'Skip weekends' };

visit('another kind keeps what was typed, in its own rows too', { user: 'asa' }, async (visitor) => {
  const calendar = 'Sales';
  await visitor.open('?p=e');
  await visitor.fillIn({ ...kTyped, calendar, reptype: 'By Weekday' });
  await visitor.fillIn({ ...kWeekly, reptype: 'Monthly' });
  await visitor.fillIn(kMonthly);
  for (const [reptype, rows] of [
    ['No Repeat', {}],
    ['By Weekday', kWeekly],
    ['Monthly', { ...kMonthly, date2: kWeekly.date2 }],
  ]) {
    await visitor.fillIn({ reptype });
    assert.deepEqual(await visitor.filledIn(), { ...kTyped, calendar, reptype, ...rows });
  }
});

visit('what was typed is shown, changed and deleted as it stands', { user: 'zoe' }, async (visitor) => {
  const typed = { ...kTyped, time1: '02:15 PM', time2: '03:45 PM', reptype: 'No Repeat' };
  await visitor.createEvent(typed);
  const [entry] = (await visitor.entries()).filter(({ text }) => text.includes('quiet'));
  assert.equal(entry.text, `02:15 PM-03:45 PM ${typed.title}`);

  await visitor.openEntry('quiet');
  assert.deepEqual(await visitor.filledIn(), { ...typed, calendar: 'Zoë Fairweather' });
  await visitor.fillIn({ date1: '3/19/2004', time2: '- - - -' });
  await visitor.press('Save');
  assert.deepEqual(await visitor.daysOf(`02:15 PM ${typed.title}`), [19]);
  assert.deepEqual(await visitor.daysOf(typed.title), [19]);

  await visitor.openEntry('quiet');
  await visitor.press('Delete');
  assert.deepEqual(await visitor.daysOf(typed.title), []);
});

const kRefused = [
  {
    what: 'no title, no dates, an end without a start, a weekday rule without days',
    fields: { reptype: 'By Weekday', title: '', date1: '2/30/2004', date2: 'soon', time2: '10:00' },
    alert:
      'The event title field is empty.\n' +
      'The start date is not a valid date.\n' +
      'You must also select a start time.\n' +
      'Repeat option is "By weekday" but no weekday has been selected.\n' +
      'Repeat option is "By weekday", but the repetition frequency has not been set.\n',
  },
  {
    what: 'an end that is not later, a monthly rule without days',
    fields: {
      reptype: 'Monthly',
      title: 'x',
      date1: '3/5/2004',
      date2: '2004-3-5',
      time1: '10:00',
      time2: '10:00',
    },
    alert:
      'The start date must be earlier than the end date.\n' +
      'The start time must be earlier than the end time.\n' +
      'Repeat option is "Monthly", but no day has been selected.\n',
  },
  {
    what: 'an end date that is none',
    fields: { reptype: 'Yearly', title: 'x', date1: '3/5/2004', date2: "o'clock" },
    alert: 'The end date is not a valid date.\n',
  },
];

visit('one alert says all that is wrong, and nothing typed is lost', { user: 'asa' }, async (visitor) => {
  for (const { what, fields, alert } of kRefused) {
    await visitor.open('?p=e');
    await visitor.fillIn(fields);
    const typed = await visitor.filledIn();
    await visitor.press('Save');
    assert.deepEqual(visitor.takeAlerts(), [alert], what);
    assert.deepEqual(await visitor.filledIn(), typed, what);
  }
});

const kNoRights = "You don't have rights for this.";

visit('nobody changes the events of another user', { user: 'niamh' }, async (visitor) => {
  const { page } = visitor;
  const queryOf = (title) =>
    page.getByTitle('Edit Event').filter({ hasText: title }).evaluate(({ search }) => search);
  await visitor.createEvent({ title: 'Open evening', date1: '3/11/2004' });
  await visitor.createEvent({ title: 'Hidden evening', date1: '3/12/2004', private: true });
  const [open, hidden] = [await queryOf('Open evening'), await queryOf('Hidden evening')];

  await visitor.logIn('jurgen');
  await visitor.open('?p=c&dm=month&cn=niamh');
  const entries = await visitor.entries();
  const shown = entries.filter(({ text }) => text.endsWith('evening'));
  assert.deepEqual(
    shown.map(({ text, isEditable }) => [text, isEditable]),
    [['Open evening', false]],
  );
  await visitor.open(hidden);
  assert.match(await page.innerText('body'), new RegExp(kNoRights));
  for (const button of ['Save', 'Delete']) {
    await visitor.open(open);
    await visitor.fillIn({ title: 'Mine now' });
    await visitor.press(button);
    assert.match(await page.innerText('body'), new RegExp(kNoRights), button);
  }

  await visitor.logIn('niamh');
  assert.deepEqual(await visitor.daysOf('Open evening'), [11]);
});
