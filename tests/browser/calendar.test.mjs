import assert from 'node:assert/strict';

import { kEmulatesMedia } from './browsers.mjs';
import { calendarSuite } from './suite.mjs';

const visit = calendarSuite();

visit('the login says what is wrong, with the cursor where it goes on', {}, async (visitor) => {
  const { page } = visitor;
  const cursorIn = (field) => page.waitForSelector(`[name=${field}]:focus`);
  await visitor.open();
  await cursorIn('Name');
  await visitor.logIn('niamh', 'Demo1');
  assert.deepEqual(visitor.takeAlerts(), ['Incorrect password.\n']);
  await cursorIn('Passwd');
  assert.equal(await page.$eval('[name=Name]', ({ value }) => value), 'niamh');
  await visitor.fillIn({ Passwd: 'demo1' });
  await visitor.press('Login');
  assert.equal(await visitor.textOf('.calname'), "Niamh O'Brien");

  await visitor.followLink('Logout niamh');
  await visitor.open('?p=c&cn=niamh');
  assert.equal(await visitor.caption(), 'CALENDAR LOGIN');
});

visit('a page comes in the language that the browser prefers', { user: 'jurgen' }, async ({ page }) => {
  const kCases = [
    ['de-AT,de;q=0.9,en;q=0.5', 'de', 'MÄRZ 2004'],
    ['ar', 'ar', 'مارس'],
    ['tlh,en;q=0.5', 'en', 'MARCH 2004'],
  ];
  for (const [accepted, language, month] of kCases) {
    const [told, html] = await page.evaluate(async (value) => {
      const answer = await fetch('?p=c&dm=month', { headers: { 'Accept-Language': value } });
      return [answer.headers.get('Content-Language'), await answer.text()];
    }, accepted);
    assert.equal(told, language);
    assert.ok(html.replaceAll('&nbsp;', ' ').includes(month), `${accepted}: ${month}`);
    assert.ok(html.includes('VALUE="3/15/2004"'), 'dates in numbers stay');
  }
});

visit('the selection row chooses what is shown, and shows it', { user: 'jurgen' }, async (visitor) => {
  const { page } = visitor;
  for (const [cd, cn, dm, caption] of [
    ['3/31/2004', '[Engineering]', 'Week', 'WEEK 14 - MAR/APR 2004'],
    ['2/29/2004', "-Who's Where-", 'Day', 'SUNDAY, FEBRUARY 29, 2004'],
    ['1/31/2004', 'Jürgen Weiß', 'Month', 'JANUARY 2004'],
  ]) {
    await visitor.fillIn({ cd, cn, dm });
    await visitor.press('OK');
    assert.equal(await visitor.caption(), caption);
    assert.deepEqual(await visitor.filledIn(), { cd, cn, dm });
  }
  await visitor.fillIn({ cd: '2004-07-04' });
  await visitor.follow(() => page.keyboard.press('Enter'));
  assert.equal(await visitor.caption(), 'JULY 2004');
});

/** The positions of the timed events of the day view on the screen, and of their hours. */
const timetableOf = ({ page }) =>
  page.evaluate(() => {
    const boxOf = (element) => element.getBoundingClientRect().toJSON();
    const shownPart = (cell) => (getComputedStyle(cell).display === 'contents' ? cell.querySelector('p') : cell);
    const hours = [...document.querySelectorAll('td[nowrap]')].map((cell) => [parseInt(cell.textContent, 10), cell]);
    const boxes = new Map(hours.map(([hour, cell]) => [hour, boxOf(cell.parentElement)]));
    return [...document.querySelectorAll('.event:not([width="24%"])')].map((cell) => {
      const [, begin, end] = /^(\d\d):\d\d(?:-(\d\d):\d\d)?\s/.exec(cell.innerText).map(Number);
      const first = Math.max(begin, hours[0][0]);
      const last = Math.min(end ? Math.max(end - 1, first) : first, hours.at(-1)[0]);
      const [top, bottom] = [boxes.get(first).top, boxes.get(last).bottom];
      return { text: cell.innerText, box: boxOf(shownPart(cell)), top, bottom };
    });
  });

visit('events stand beside their hours, and none over another', { user: 'jurgen' }, async (visitor) => {
  const overlap = (one, other, start, end) => Math.min(one[end], other[end]) - Math.max(one[start], other[start]);
  const lines = 2; // pixels between cells
  let neighbours = 0;
  for (const query of [
    ...[15, 16, 17, 18, 19].map((day) => `cn=jurgen&cd=2004-03-${day}`),
    ...[2, 3, 4, 9].map((day) => `cn=@engineeringteam&cd=2004-03-0${day}`),
    'cn=ines&cd=2004-04-14',
  ]) {
    await visitor.open(`?p=c&dm=day&${query}`);
    const events = await timetableOf(visitor);
    for (const { text, box, top, bottom } of events) {
      assert.ok(Math.abs(box.top - top) <= lines && Math.abs(box.bottom - bottom) <= lines, `${query}, ${text}`);
      const others = events.filter((other) => other.box !== box);
      const beside = others.filter((other) => overlap(box, other.box, 'top', 'bottom') > lines);
      const covered = beside.filter((other) => overlap(box, other.box, 'left', 'right') > lines);
      assert.deepEqual(covered, [], `${query}, ${text}`);
      neighbours += beside.length;
    }
  }
  assert.ok(neighbours > 0);
});

const onPaper = { user: 'asa', skip: !kEmulatesMedia };
visit('paper shows the calendar without what can only be clicked', onPaper, async (visitor) => {
  const { page } = visitor;
  const countVisible = (selector) =>
    page.$$eval(selector, (all) => all.filter((element) => element.checkVisibility()).length);
  const clickable = '.plain a, .plain img, [name=cd], [name=cn], [name=dm], [type=button]';
  for (const view of ['month', 'week', 'day']) {
    await page.emulateMediaType('screen');
    await visitor.open(`?p=c&dm=${view}`);
    assert.ok((await countVisible(clickable)) > 10, view);
    await page.emulateMediaType('print');
    assert.equal(await countVisible(clickable), 0, view);
    assert.equal(await countVisible('.calname, .caltitle'), 2, view);
    assert.ok((await countVisible('a[title="Edit Event"]')) > 0, view);
  }
});
