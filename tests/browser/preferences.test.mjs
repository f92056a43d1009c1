import assert from 'node:assert/strict';

import { calendarSuite } from './calendar_suite.mjs';

const visit = calendarSuite();

async function prefer(visitor, values) {
  await visitor.open('?p=p');
  await visitor.fillIn(values);
  await visitor.press('Save Changes');
}

/** The weekdays at the head of the columns, each with a star where the days below look like weekend. */
const weekOf = ({ page }) =>
  page.evaluate(() => {
    const cells = [...document.querySelectorAll('.background > table > tbody > tr > td')];
    const days = cells.filter((cell) => cell.querySelector('a') && !cell.matches('.captions'));
    const starOf = ({ cellIndex }) => {
      const column = days.filter((day) => day.cellIndex === cellIndex);
      return [...new Set(column.map((day) => (day.matches('.weekend') ? '*' : '')))].join();
    };
    return cells
      .filter((cell) => cell.matches('.captions') && cell.colSpan === 1 && /^\p{L}/u.test(cell.textContent))
      .map((heading) => heading.textContent + starOf(heading))
      .join(' ');
  });

const kWeeks = [
  {
    firstday: 'Sunday',
    weekend: ['Friday', 'Saturday'],
    week: 'Sunday Monday Tuesday Wednesday Thursday Friday* Saturday*',
    letters: 'S M T W T F* S*',
  },
  {
    firstday: 'Thursday',
    weekend: [],
    week: 'Thursday Friday Saturday Sunday Monday Tuesday Wednesday',
    letters: 'T F S S M T W',
  },
];

visit('weeks begin on the day that one likes, and end as one likes', { user: 'asa' }, async (visitor) => {
  for (const { firstday, weekend, week, letters } of kWeeks) {
    await prefer(visitor, { firstday, weekend });
    for (const [query, expected] of [
      ['?p=c&dm=month&cd=5/5/2004', week],
      ['?p=c&dm=week&cd=5/5/2004', week],
      ['?p=s&sd=5/5/2004', letters],
    ]) {
      await visitor.open(query);
      assert.equal(await weekOf(visitor), expected, `${query} from ${firstday}`);
    }
  }
});

const kClocks = [
  { clock: '12-hour clock', span: '01:00 PM-04:00 PM', begin: '01:00 PM', row: '01:00 PM', last: '11:00 PM' },
  { clock: '24-hour clock', span: '13:00-16:00', begin: '13:00', row: '13:00', last: '23:00' },
];

visit('the clock is the same in entries, hours and lists of times', { user: 'asa' }, async (visitor) => {
  const { page } = visitor;
  for (const { clock, span, begin, row, last } of kClocks) {
    await prefer(visitor, { clock });
    for (const view of ['month', 'week']) {
      await visitor.open(`?p=c&dm=${view}&cd=3/2/2004`);
      const texts = (await visitor.entries()).map(({ text }) => text);
      assert.ok(texts.includes(`${span} Visit Kowalczyk i Syn`), `${clock} in the ${view}`);
    }
    await visitor.open('?p=c&dm=day');
    assert.ok((await page.locator('td[nowrap]').allTextContents()).includes(row), `${clock} beside the day`);
    await visitor.openEntry('Visit Kowalczyk i Syn');
    assert.equal((await visitor.filledIn()).time1, begin);
    await visitor.open('?p=p');
    assert.equal((await page.locator('[name=dayend] option').last().innerText()).trim(), last);
  }
});

visit('the day shows the hours that one works', { user: 'asa' }, async (visitor) => {
  for (const [daybegin, dayend, hours] of [
    ['10:00', '13:00', ['10:00', '11:00', '12:00', '13:00']],
    ['22:00', '23:00', ['22:00', '23:00']],
  ]) {
    await prefer(visitor, { daybegin, dayend });
    await visitor.open('?p=c&dm=day');
    assert.deepEqual(await visitor.page.locator('td[nowrap]').allTextContents(), hours);
  }
});

visit('the start mode counts from the next login on', { user: 'mikko' }, async (visitor) => {
  await visitor.choose({ view: 'Month' });
  await prefer(visitor, { mode: 'Day' });
  assert.equal(await visitor.caption(), 'MARCH 2004');
  await visitor.logIn('mikko');
  assert.equal(await visitor.caption(), 'MONDAY, MARCH 15, 2004');
});

const kSchemes = {
  Dark: ['rgb(17, 21, 26)', 'rgb(226, 232, 238)'],
  'High Contrast': ['rgb(0, 0, 0)', 'rgb(255, 255, 255)'],
  Nineties: ['rgb(0, 120, 120)', 'rgb(255, 255, 255)'],
  Default: ['rgb(237, 240, 244)', 'rgb(29, 39, 51)'],
};

visit('a colour scheme colours the pages at once', { user: 'asa' }, async (visitor) => {
  const colours = () =>
    visitor.page.evaluate(() => {
      const { backgroundColor, color } = getComputedStyle(document.body);
      return [backgroundColor, color];
    });
  for (const [css, expected] of Object.entries(kSchemes)) {
    await prefer(visitor, { css });
    assert.deepEqual(await colours(), expected, css);
    await visitor.open('?p=e');
    assert.deepEqual(await colours(), expected, `${css} of the event form`);
  }
});

visit('a day that ends before it begins is refused, and choices stay', { user: 'niamh' }, async (visitor) => {
  await visitor.pressButton('Preferences');
  const before = await visitor.filledIn();
  const chosen = {
    mode: 'Week',
    firstday: 'Wednesday',
    weekend: ['Monday', 'Thursday'],
    clock: '12-hour clock',
    css: 'Dark',
  };
  for (const [daybegin, dayend] of [
    ['18:00', '18:00'],
    ['23:00', '00:00'],
  ]) {
    await visitor.fillIn({ ...chosen, daybegin, dayend });
    await visitor.press('Save Changes');
    assert.deepEqual(visitor.takeAlerts(), ['The start time must be earlier than the end time.\n']);
    assert.deepEqual(await visitor.filledIn(), { ...chosen, daybegin, dayend });
  }
  await visitor.open('?p=p');
  assert.deepEqual(await visitor.filledIn(), before);
});

const kIncorrect = 'Incorrect password.\n';
const kSpaces = 'Password field must not contain spaces.\n';
const kDifferent = 'Please type the same password twice in the New Password fields.\n';
const kRefusedPasswords = [
  { oldpw: 'Demo1', newpw1: 'a b', newpw2: 'c', alert: kIncorrect },
  { oldpw: '', newpw1: 'secret', newpw2: 'secret', alert: kIncorrect },
  { oldpw: 'demo1', newpw1: 'a b', newpw2: 'c', alert: kSpaces },
  { oldpw: 'demo1', newpw1: 'a b', newpw2: 'a b', alert: kSpaces },
  { oldpw: 'demo1', newpw1: 'secret', newpw2: 'Secret', alert: kDifferent },
];
const kNewPassword = `ö'<"2`;

visit('a new password logs in, the old one no longer does', { user: 'ines' }, async (visitor) => {
  await visitor.pressButton('Preferences');
  await visitor.pressButton('Change Password');
  for (const { alert, ...passwords } of kRefusedPasswords) {
    await visitor.fillIn(passwords);
    await visitor.press('Change Password');
    assert.deepEqual(visitor.takeAlerts(), [alert], JSON.stringify(passwords));
    assert.deepEqual(await visitor.filledIn(), { oldpw: '', newpw1: '', newpw2: '' });
  }
  await visitor.fillIn({ oldpw: 'demo1', newpw1: kNewPassword, newpw2: kNewPassword });
  await visitor.press('Change Password');
  assert.equal(await visitor.caption(), 'PREFERENCES');

  await visitor.logIn('ines', 'demo1');
  assert.deepEqual(visitor.takeAlerts(), [kIncorrect]);
  await visitor.submitLogin('ines', kNewPassword);
  assert.equal(await visitor.calendarTitle(), 'Inês Duarte');
});
