import assert from 'node:assert/strict';

import { calendarSuite } from './suite.mjs';

const visit = calendarSuite();

const kTyped = {
  title: `Zoë's "quiet" <img src=x onerror=alert(1)> & 🎻`,
  date1: '3/18/2004',
  time1: '14:15',
  time2: '15:45',
  type: 'Meeting',
  addinfo: `"That's" </textarea><script>alert(2)</script>\nsecond line 🎷`,
  calendar: 'Sales',
  private: true,
};
const kWeekly = { date2: '6/30/2004', repweekday: ['Monday', 'Sunday'], frequency: '3rd in month' };
const kMonthly = { repday: ['1.', '15.', '31.'], repweekends: 'vkl_no' };

visit('what was typed stays as it stands', { user: 'asa' }, async (visitor) => {
  await visitor.open('?p=e');
  await visitor.fillIn({ ...kTyped, reptype: 'By Weekday' });
  await visitor.fillIn({ date2: 'soon' });
  const refused = await visitor.filledIn();
  await visitor.press('Save');
  assert.deepEqual(visitor.takeAlerts(), [
    'The end date is not a valid date.\n' +
      'Repeat option is "By weekday" but no weekday has been selected.\n' +
      'Repeat option is "By weekday", but the repetition frequency has not been set.\n',
  ]);
  assert.deepEqual(await visitor.filledIn(), refused);

  await visitor.fillIn({ ...kWeekly, reptype: 'Monthly' });
  await visitor.fillIn(kMonthly);
  for (const [reptype, rows] of [
    ['By Weekday', kWeekly],
    ['Monthly', { ...kMonthly, date2: kWeekly.date2 }],
    ['No Repeat', {}],
  ]) {
    await visitor.fillIn({ reptype });
    assert.deepEqual(await visitor.filledIn(), { ...kTyped, reptype, ...rows });
  }

  await visitor.press('Send');
  await visitor.fillIn({ vastaanottaja: ['[Office Life]'], reptype: 'Daily' }); // submits and returns to the form
  await visitor.fillIn({ date2: '3/19/2004' });
  assert.deepEqual((await visitor.filledIn()).vastaanottaja, ['[Office Life]']);
  await visitor.press('Send');
  assert.deepEqual(await visitor.daysOf(`14:15-15:45 ${kTyped.title}`), [18, 19]);

  await visitor.followLink('quiet');
  assert.deepEqual(await visitor.filledIn(), { ...kTyped, reptype: 'Daily', date2: '3/19/2004' });
  await visitor.press('Delete');
  assert.match(visitor.takeAlerts().join(), /^Delete the whole series “Zoë's .* 🎻” with all/);
  assert.deepEqual(await visitor.daysOf(kTyped.title), []);
});

visit('the popup writes into the date field that it was opened from', { user: 'asa' }, async (visitor) => {
  const { page } = visitor;
  await visitor.open('?p=e');
  await visitor.fillIn({ title: 'Regatta', reptype: 'Daily' });
  for (const [button, months, day] of [
    ['pick2', 2, '4'],
    ['pick1', 0, '31'],
  ]) {
    const popup = await visitor.popupOf(`[name=${button}]`);
    for (let i = 0; i < months; ++i) await visitor.follow(() => popup.click('[title="Next Month"]'), popup);
    const closed = new Promise((resolve) => popup.once('close', resolve));
    await popup.click(`a ::-p-text(${day})`);
    await closed;
  }
  const { title, date1, date2 } = await visitor.filledIn();
  assert.deepEqual([title, date1, date2], ['Regatta', '3/31/2004', '5/4/2004']);
});

visit('found events lead to their days, and go when they are ticked', { user: 'asa' }, async (visitor) => {
  const { page } = visitor;
  await visitor.open('?p=e');
  await visitor.fillIn({ title: 'Rig the boats', reptype: 'Daily' });
  await visitor.fillIn({ date1: '3/30/2004', date2: '4/2/2004' });
  await visitor.press('Save');

  const find = async () => {
    await visitor.open('?p=e&act=find');
    await visitor.fillIn({ search: 'BOATS', cal: 'Åsa Lindqvist', reptype: 'Daily', date1: '3/1/2004' });
    await visitor.press('Find Events');
  };
  await find();
  await visitor.choose('select[name^=cd]', ['Fri 4/2/2004']);
  await visitor.press('Go');
  assert.equal(await visitor.caption(), 'APRIL 2004');
  assert.deepEqual(await visitor.daysOf('Rig the boats'), [1, 2]);

  await find();
  await page.click('[type=checkbox]');
  await visitor.press('Delete Selected Events');
  assert.equal(visitor.takeAlerts().length, 1);
  await page.waitForSelector('::-p-text((No Events Found))');
});
