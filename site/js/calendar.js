// The views of a calendar: tells each day's weekday, and makes an empty day or hour begin a new event there.

import { remember, take } from './memory.js';
import { content, form, isView, linkTo, queryOf } from './page.js';
import { texts } from './texts.js';

/** The short name of a weekday in the first language that has this name for one; the name itself in others. */
function abbreviate(name, languages) {
  for (const language of languages) {
    const [long, short] = ['long', 'short'].map((weekday) => new Intl.DateTimeFormat(language, { weekday }));
    for (let day = 1; day <= 7; ++day) {
      const date = new Date(2024, 0, day);
      if (long.format(date).toLowerCase() === name.toLowerCase()) return short.format(date);
    }
  }
  return name;
}

const dayCells = () => [...(content?.querySelectorAll('td:has(> .daynumber)') ?? [])];

/** In the attribute data-weekday, for lists of days that have no header row. */
export async function tellWeekdays() {
  const days = dayCells();
  if (!days.length) return;
  const header = days[0].closest('table').rows[0];
  const tell = (languages) => {
    const names = [...header.cells].map((cell) => abbreviate(cell.textContent.trim(), languages));
    for (const day of days) day.dataset.weekday = names[day.cellIndex];
  };
  tell([...navigator.languages, 'en']);
  const known = await texts;
  if (known) tell([known.language, 'en']);
}

/** The date, and in the day view the hour, of a cell; nothing when it is no day or hour, or one that is taken. */
function placeOf(cell) {
  if (cell.matches(':has(> .daynumber)')) return { date: queryOf(cell.querySelector('a').href).get('cd') };
  const row = cell.parentElement;
  const isHour = form.elements.dm.value === 'day' && row.cells[0].matches('.captions[nowrap]');
  if (!isHour || cell.matches('.captions')) return null;
  const date = form.elements.cd.defaultValue;
  if (cell === untimedCell()) return { date };
  const next = row.nextElementSibling?.cells[0].textContent;
  return cell.matches('.event') ? null : { date, time: row.cells[0].textContent, after: next };
}

/** In the day view, the last cell of the first hour holds the events without a time. */
const untimedCell = () => content.querySelector('tr:has(> .captions[nowrap])').lastElementChild;

/** Entries that the visitor may not change are texts without a link. */
function isOnText(cell, { clientX, clientY }) {
  const range = document.createRange();
  const walker = document.createTreeWalker(cell, NodeFilter.SHOW_TEXT);
  while (walker.nextNode()) {
    if (walker.currentNode.data.trim() === '') continue;
    range.selectNodeContents(walker.currentNode);
    const isIn = ({ left, right, top, bottom }) =>
      clientX >= left && clientX <= right && clientY >= top && clientY <= bottom;
    if ([...range.getClientRects()].some(isIn)) return true;
  }
  return false;
}

function fillInNewEvent({ date, time, after, calendar }) {
  if (!form?.elements.date1 || form.elements.id?.value !== '' || location.search !== '?p=e') return;
  const choose = (name, value) => {
    const option = [...(form.elements[name]?.options ?? [])].find((one) => one.value === value);
    if (option) option.selected = true;
  };
  form.elements.date1.value = date;
  choose('time1', time);
  choose('time2', after);
  choose('calendar', calendar);
}

/** A click beside the entries of a day, or on an empty hour, opens the form of a new event. */
export function listenForClicks() {
  const asked = take('new event');
  if (asked) fillInNewEvent(asked);
  const link = isView && linkTo('e');
  if (!link) return;
  content.addEventListener('click', (event) => {
    const { target } = event;
    const cell = target.closest('td');
    const isBeside = !target.closest('a, input, select, label, b, font, img') && getSelection().isCollapsed;
    const place = isBeside && cell !== content && !isOnText(cell, event) && placeOf(cell);
    if (!place) return;
    remember('new event', { ...place, calendar: form.elements.cn.value });
    location.assign(link.href);
  });
}
