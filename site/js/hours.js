// Below the day view: how many events take place before or after its hours. They are found by the search.

import { companion, content, form, isView, make, post, shownCalendar } from './page.js';
import { fill, texts } from './texts.js';

/** Nothing when the server does not answer, or the visitor has gone on meanwhile. */
async function askHours(date, calendar) {
  const query = new URLSearchParams(calendar ? { date, calendar } : { date });
  try {
    const answer = await fetch(`${companion('hours')}?${query}`);
    return answer.ok ? await answer.json() : {};
  } catch {
    return {};
  }
}

export async function tellHiddenHours() {
  if (!isView || form.elements.dm.value !== 'day') return;
  const date = form.elements.cd.defaultValue;
  const calendar = shownCalendar();
  const [{ earlier = 0, later = 0 }, known] = await Promise.all([askHours(date, calendar), texts]);
  if (!known || earlier + later === 0) return;
  const counts = [earlier && fill(known.earlier, earlier), later && fill(known.later, later)].filter((text) => text);
  const list = new Intl.ListFormat(known.language, { type: 'unit' }).format(counts);
  const link = make('a', { href: `${location.pathname}?p=e&act=find`, title: known.findThese }, list);
  link.addEventListener('click', (event) => {
    event.preventDefault();
    const cal = calendar.startsWith('@') ? '' : calendar; // group views have no place in the search
    post('p=e&act=results', Object.entries({ search: '', cal, reptype: '', date1: date }));
  });
  content.append(make('div', { class: 'orlune-hours' }, link));
}
