// The small windows, the date picker and the colours of a group view: fit the screen, close by Escape; the picker's
// days tell their month, and the focus stays on the arrows from month to month.

import { remember, take } from './memory.js';
import { content, make } from './page.js';

const isSmall = () => window.opener !== null || /^\?p=s\b|act=gcols\b/.test(location.search);

const arrows = () => [...(content?.querySelectorAll('a.captions[href*="p=s&"]') ?? [])];
const days = () => [...(content?.querySelectorAll('a[href^="javascript:"]') ?? [])];

/** Where the last arrow was followed, there; otherwise on the day that the form names. */
function placeFocus() {
  const followed = take('arrow');
  const asked = new URLSearchParams(location.search).get('sd');
  const day = days().find((link) => asked && link.href.includes(`'${asked}'`));
  (arrows()[followed] ?? day ?? days()[0])?.focus();
}

function equipPicker() {
  const month = content.querySelector('td[colspan]')?.textContent.replace(/\s/g, ' ');
  for (const day of days()) day.setAttribute('aria-label', `${day.textContent} ${month}`);
  for (const [i, arrow] of arrows().entries()) {
    arrow.setAttribute('aria-label', arrow.title);
    arrow.addEventListener('click', () => remember('arrow', i));
  }
  placeFocus();
}

export function equipSmallWindow() {
  if (!document.querySelector('meta[name=viewport]')) {
    document.head.append(make('meta', { name: 'viewport', content: 'width=device-width, initial-scale=1' }));
  }
  if (!isSmall()) return;
  document.addEventListener('keydown', ({ key }) => key === 'Escape' && window.close());
  if (days().length) equipPicker();
}
