// The small windows, the date picker and the colours of a group view: fit their content and the screen, close by Escape;
// the picker's days tell their month, and the focus stays on the arrows from month to month.

import { remember, take } from './memory.js';
import { content, make } from './page.js';

// As the pages open them, for smaller letters and fingers than the style sheets have.
const kOpened = 200;
const kPicker = [280, 290];

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

/** Once, when the window opens; to the left, where the page placed it. */
function enlarge() {
  if (!window.opener || window.innerWidth > kOpened) return;
  const { scrollWidth, scrollHeight } = document.scrollingElement;
  const [width, height] = days().length ? kPicker : [Math.max(scrollWidth, 220), Math.min(scrollHeight, 600)];
  const wider = width - window.innerWidth;
  window.resizeBy(wider, Math.max(0, height - window.innerHeight));
  window.moveBy(-wider, 0);
}

export function equipSmallWindow() {
  if (!document.querySelector('meta[name=viewport]')) {
    document.head.append(make('meta', { name: 'viewport', content: 'width=device-width, initial-scale=1' }));
  }
  if (!isSmall()) return;
  document.addEventListener('keydown', ({ key }) => key === 'Escape' && window.close());
  enlarge();
  if (days().length) equipPicker();
}
