// The views of a calendar: tells each day's weekday, and makes an empty day or hour begin a new event there.

import { recall, remember, take } from './memory.js';
import { content, form, isView, linkTo, queryOf, shownCalendar } from './page.js';
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

const hourCells = () => [...content.querySelectorAll('td.captions[nowrap]')];

/** Free cells of the day view may lie behind an event's, so that its hours are told by the height of the click. */
function hourAt(clientY) {
  const hours = hourCells();
  const i = hours.findIndex((cell) => {
    const { top, bottom } = cell.getBoundingClientRect();
    return clientY >= top && clientY < bottom;
  });
  return i < 0 ? null : { time: hours[i].textContent, after: hours[i + 1]?.textContent };
}

// Below this width the style sheets make lists of month and week.
const kLists = '(max-width: 760px)';

const dateOf = (day) => queryOf(day.querySelector('a').href).get('cd');

/** The day that was chosen among the occurrences of a found event, otherwise today. */
function wantedDay() {
  const isFound = document.referrer !== '' && queryOf(document.referrer).get('p') === 'e';
  const date = isFound ? queryOf(location.href).get('cd') : null;
  return (date && dayCells().find((day) => dateOf(day) === date)) || content?.querySelector('td.today');
}

/** In a long list of days, the wanted one is shown at once. Not when the visitor comes back, or is told something above. */
export function scrollToDay() {
  const wanted = wantedDay();
  const [arrival] = performance.getEntriesByType('navigation');
  if (arrival?.type !== 'navigate' || location.hash || window.scrollY > 0 || recall('draft')) return;
  const isBelow = wanted?.getBoundingClientRect().top > window.innerHeight;
  if (isBelow && matchMedia(kLists).matches) wanted.scrollIntoView({ block: 'center' });
}

/** The date, and in the day view the hour, of a click; nothing when it is on none, or on one that is taken. */
function placeOf({ target, clientY }) {
  const day = target.closest('td:has(> .daynumber)');
  if (day) return { date: queryOf(day.querySelector('a').href).get('cd') };
  if (form.elements.dm.value !== 'day') return null;
  const cell = target.closest('td');
  const date = form.elements.cd.defaultValue;
  const isUntimed = cell === hourCells()[0]?.parentElement.lastElementChild;
  if (cell?.matches('.event')) return isUntimed ? { date } : null;
  const hour = hourAt(clientY);
  return hour && { date, ...hour };
}

/** Entries that the visitor may not change are texts without a link. */
function isOnText({ target, clientX, clientY }) {
  const range = document.createRange();
  const walker = document.createTreeWalker(target, NodeFilter.SHOW_TEXT);
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
  content.classList.add('orlune-new');
  content.addEventListener('click', (event) => {
    const { target } = event;
    if (target.closest('a, input, select, label, img') || !getSelection().isCollapsed || isOnText(event)) return;
    const place = placeOf(event);
    if (!place) return;
    remember('new event', { ...place, calendar: shownCalendar() });
    location.assign(link.href);
  });
}
