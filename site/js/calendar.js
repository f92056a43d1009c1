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

/** The date, and in the day view the hour, of an empty place; nothing elsewhere. */
function placeOf(cell) {
  if (!cell || cell.closest('td.background') !== content) return null;
  if (cell.matches(':has(> .daynumber)')) return { date: queryOf(cell.querySelector('a').href).get('cd') };
  const hour = cell.parentElement.cells[0];
  if (form.elements.dm.value !== 'day' || !hour?.matches('.captions[nowrap]') || cell.matches('.captions')) return null;
  const date = form.elements.cd.defaultValue;
  if (!cell.matches('.event')) return { date, time: hour.textContent, after: nextHour(cell) };
  return cell.textContent.trim() === '' ? { date } : null;
}

const nextHour = (cell) => cell.parentElement.nextElementSibling?.cells[0]?.textContent;

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
  const place = take('new event');
  if (place) fillInNewEvent(place);
  const link = isView && linkTo('e');
  if (!link) return;
  content.addEventListener('click', ({ target }) => {
    const cell = target.closest('td');
    const isBeside = !target.closest('a, input, select, label, b, img') && getSelection().isCollapsed;
    const clicked = isBeside && placeOf(cell);
    if (!clicked) return;
    remember('new event', { ...clicked, calendar: form.elements.cn.value });
    location.assign(link.href);
  });
}
