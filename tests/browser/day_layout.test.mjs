import assert from 'node:assert/strict';

import { calendarSuite } from './calendar_suite.mjs';

const visit = calendarSuite();

const kTolerance = 2; // pixels: the lines between cells

/** The hour rows and the timed events of the day that is shown, as a person sees them on the screen. */
async function timetableOf({ page }) {
  return page.evaluate(() => {
    const boxOf = (element) => {
      const { top, bottom, left, right } = element.getBoundingClientRect();
      return { top, bottom, left, right };
    };
    const shownPart = (cell) =>
      getComputedStyle(cell).display === 'contents' ? cell.querySelector('p') : cell;
    const hours = [...document.querySelectorAll('td[nowrap]')].map((cell) => ({
      hour: parseInt(cell.textContent, 10),
      ...boxOf(cell.parentElement),
    }));
    const events = [...document.querySelectorAll('.event:not([width="24%"])')].map((cell) => ({
      text: cell.innerText,
      ...boxOf(shownPart(cell)),
    }));
    const [allDay] = [...document.querySelectorAll('.event[width="24%"]')].map(boxOf);
    return { hours, events, allDay };
  });
}

/** The hours of the first and the last row that an event should fill; both are hours that are shown. */
function rowsOf(event, hours) {
  const [, begin, end] = /^(\d\d):\d\d(?:-(\d\d):\d\d)?\s/.exec(event.text);
  const first = Math.max(Number(begin), hours[0].hour);
  const last = end ? Math.max(Number(end) - 1, first) : first;
  return [first, Math.min(last, hours.at(-1).hour)];
}

const isOver = (one, other, start, end) =>
  Math.min(one[end], other[end]) - Math.max(one[start], other[start]) > kTolerance;
const isBeside = (one, other) => one !== other && isOver(one, other, 'top', 'bottom');
const isOnTop = (one, other) => isBeside(one, other) && isOver(one, other, 'left', 'right');

function assertSpansItsHours(event, hours) {
  const [first, last] = rowsOf(event, hours);
  const { top } = hours.find(({ hour }) => hour === first);
  const { bottom } = hours.find(({ hour }) => hour === last);
  const where = `${event.text}: ${event.top}-${event.bottom}, but rows ${first}-${last}: ${top}-${bottom}`;
  assert.ok(Math.abs(event.top - top) <= kTolerance && Math.abs(event.bottom - bottom) <= kTolerance, where);
}

function assertLaidOut({ hours, events, allDay }) {
  for (const event of events) {
    assertSpansItsHours(event, hours);
    assert.ok(event.right <= allDay.left + kTolerance, `${event.text} reaches into the all-day column`);
    for (const other of events) assert.ok(!isOnTop(event, other), `${event.text} lies over ${other.text}`);
  }
}

const kKinds = {
  'several hours long': (event, { hours }) => rowsOf(event, hours)[0] < rowsOf(event, hours)[1],
  'over within its first hour': (event) => /^(\d\d):\d\d-\1:\d\d/.test(event.text),
  'without an end': (event) => /^\d\d:\d\d\s/.test(event.text),
  'begun before the first row': (event, { hours }) => Number(event.text.slice(0, 2)) < hours[0].hour,
  'beside another': (event, { events }) => events.some((other) => isBeside(event, other)),
};

const kStretches = [
  { user: 'jurgen', calendar: 'jurgen', month: '2004-03', first: 15, last: 19 },
  { user: 'jurgen', calendar: '@engineeringteam', month: '2004-03', first: 1, last: 12 },
  { user: 'ines', calendar: 'ines', month: '2004-04', first: 13, last: 16 },
];

visit('events stand beside their hours, and none over another', {}, async (visitor) => {
  const seen = new Set();
  for (const { user, calendar, month, first, last } of kStretches) {
    await visitor.logIn(user);
    for (let day = first; day <= last; ++day) {
      await visitor.open(`?p=c&dm=day&cn=${calendar}&cd=${month}-${String(day).padStart(2, '0')}`);
      const timetable = await timetableOf(visitor);
      assertLaidOut(timetable);
      for (const [kind, isKind] of Object.entries(kKinds)) {
        if (timetable.events.some((event) => isKind(event, timetable))) seen.add(kind);
      }
    }
  }
  assert.deepEqual([...seen].sort(), Object.keys(kKinds).sort(), 'the days hold events of every kind');
});
