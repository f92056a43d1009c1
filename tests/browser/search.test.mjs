import assert from 'node:assert/strict';

import { calendarSuite } from './calendar_suite.mjs';

const visit = calendarSuite();

const kHit = '//tr[td/input[@name="id"]]';

/** The first twenty found events: `title` with its owner, `time`, the `days` on which each occurs. */
async function hitsOf({ page }) {
  return page.locator(kHit).evaluateAll((rows) =>
    rows.slice(0, 20).map(({ cells: [title, time, occurrences] }) => ({
      title: title.innerText,
      time: time.innerText.trim(),
      days: [...occurrences.querySelectorAll('option')].map(({ text }) => text),
    })),
  );
}

async function search(visitor, fields) {
  await visitor.open('?p=e&act=find');
  await visitor.fillIn({ date1: '3/1/2004', ...fields });
  await visitor.press('Find Events');
}

const kRace = {
  title: 'Regatta: the race (Åsa Lindqvist)',
  time: '10:00-12:30',
  days: ['Sat 3/20/2004'],
};
const kRig = {
  title: 'Rig the boats (Åsa Lindqvist)',
  time: '',
  days: ['Mon 3/1/2004', 'Wed 3/31/2004', 'Thu 4/1/2004', 'Fri 4/30/2004'],
};
const kDinner = { title: "Regatta's dinner (Sales)", time: '19:00', days: ['Sun 3/21/2004'] };
const kWinter = {
  title: 'Winter regatta (Åsa Lindqvist)',
  time: '',
  days: ['Fri 12/5/2003', 'Sat 12/6/2003', 'Sun 12/7/2003'],
};

async function fillTheSeason(visitor) {
  await visitor.createEvent({
    title: 'Regatta: the race',
    date1: '3/20/2004',
    time1: '10:00',
    time2: '12:30',
  });
  await visitor.createEvent({
    title: 'Rig the boats',
    addinfo: 'before every REGATTA',
    reptype: 'Monthly',
    date1: '3/1/2004',
    date2: '5/1/2004',
    repday: ['1.', '31.'],
    repweekends: 'Skip weekends',
  });
  await visitor.createEvent({
    title: "Regatta's dinner",
    date1: '3/21/2004',
    time1: '19:00',
    calendar: 'Sales',
  });
  await visitor.createEvent({
    title: 'Winter regatta',
    reptype: 'Daily',
    date1: '12/5/2003',
    date2: '12/7/2003',
  });
}

visit('events are found by words, calendar, kind and date', { user: 'asa' }, async (visitor) => {
  await fillTheSeason(visitor);
  for (const [fields, expected] of [
    [{ search: 'rEGATTA' }, [kRig, kRace, kDinner]],
    [{ search: 'regatta', cal: 'Åsa Lindqvist' }, [kRig, kRace]],
    [{ search: 'regatta', cal: '[Sales]' }, [kDinner]],
    [{ search: 'regatta', reptype: 'Monthly' }, [kRig]],
    [{ search: 'regatta', date1: '12/7/2003' }, [kWinter, kRig, kRace, kDinner]],
    [{ search: 'regatta', date1: '2004-03-21' }, [kRig, kDinner]],
    [{ search: 'regatta', date1: '3/22/2004', reptype: 'Daily' }, []],
  ]) {
    await search(visitor, fields);
    assert.deepEqual(await hitsOf(visitor), expected, JSON.stringify(fields));
  }
  assert.equal(await visitor.page.getByText('(No Events Found)').count(), 1);

  const rowOf = ({ title }) => visitor.page.locator(kHit, { hasText: title });
  await search(visitor, { search: 'regatta' });
  await rowOf(kRig).getByRole('combobox').selectOption({ label: kRig.days.at(-1) });
  await visitor.follow(() => rowOf(kRig).getByRole('button', { name: 'Go' }).click());
  assert.equal(await visitor.calendarTitle(), 'Åsa Lindqvist');
  assert.equal(await visitor.caption(), 'APRIL 2004');
  assert.deepEqual(await visitor.daysOf('Rig the boats'), [1, 30]);

  await search(visitor, { search: 'regatta', date1: '12/7/2003' });
  for (const hit of [kWinter, kDinner]) await rowOf(hit).getByRole('checkbox').check();
  await visitor.press('Delete Selected Events');
  assert.deepEqual(await hitsOf(visitor), [kRig, kRace]);
  await visitor.openEntry('the race');
  assert.equal((await visitor.filledIn()).title, 'Regatta: the race');
});

visit('a search from what is no date comes back as it was', { user: 'asa' }, async (visitor) => {
  const fields = { search: `"O'Neill"`, cal: '[Sales]', reptype: 'Yearly', date1: "'31.6.'" };
  await search(visitor, fields);
  assert.deepEqual(visitor.takeAlerts(), ['The start date is not a valid date.\n']);
  assert.deepEqual(await visitor.filledIn(), fields);
});

visit('a suggestion is found where it is in a calendar', { user: 'noor' }, async (visitor) => {
  await search(visitor, { search: 'Joint visit' });
  assert.deepEqual(
    (await hitsOf(visitor)).map(({ title }) => title),
    ['Zoë Fairweather', 'Åsa Lindqvist'].map((owner) => `Joint visit to Nordvik Waterworks (${owner})`),
  );
});

visit('private events of others are found without their titles', { user: 'noor' }, async (visitor) => {
  await search(visitor, { search: 'School run', cal: 'Priya Raman', date1: '1/1/2004' });
  const titles = (await hitsOf(visitor)).map(({ title }) => title);
  assert.deepEqual([...new Set(titles)], ['Private (Priya Raman)']);
  assert.equal(await visitor.page.getByTitle('Edit Event').count(), 0);
});
