// The small windows, the date picker and the colours of a group view: fit their content and the screen, close by
// Escape; the picker's days tell their month, and the focus stays on the arrows from month to month.

import { remember, take } from './memory.js';
import { content, make } from './page.js';
import { texts } from './texts.js';

// As the pages open them, for smaller letters and fingers than the style sheets have.
const kOpened = 200;
const kPicker = [280, 290];

const query = new URLSearchParams(location.search);
const isSmall = query.get('p') === 's' || query.get('act') === 'gcols';

const arrows = () => [...(content?.querySelectorAll('a.captions[href*="p=s&"]') ?? [])];
const days = () => [...(content?.querySelectorAll('a[href^="javascript:"]') ?? [])];

/** Where the last arrow was followed, there; otherwise on the day that the form names. */
function placeFocus() {
  const followed = take('arrow');
  const asked = query.get('sd');
  const day = days().find((link) => asked && link.href.includes(`'${asked}'`));
  (arrows()[followed] ?? day ?? days()[0])?.focus();
}

const kSteps = { ArrowLeft: -1, ArrowRight: 1, ArrowUp: -7, ArrowDown: 7 };

/** The arrow keys move from day to day, the page keys from month to month. */
function moveByKeys(event) {
  const [previous, next] = arrows();
  const isMirrored = getComputedStyle(document.documentElement).direction === 'rtl';
  const step = kSteps[event.key] * (isMirrored && Math.abs(kSteps[event.key]) === 1 ? -1 : 1);
  const day = days()[days().indexOf(document.activeElement) + step];
  if (day) day.focus();
  if (event.key === 'PageUp') previous.click();
  if (event.key === 'PageDown') next.click();
  if (step || event.key.startsWith('Page')) event.preventDefault();
}

function equipPicker() {
  const month = content.querySelector('td[colspan]')?.textContent.replace(/\s/g, ' ');
  for (const day of days()) day.setAttribute('aria-label', `${day.textContent} ${month}`);
  for (const [i, arrow] of arrows().entries()) {
    arrow.setAttribute('aria-label', arrow.title);
    arrow.addEventListener('click', () => remember('arrow', i));
  }
  document.addEventListener('keydown', moveByKeys);
  placeFocus();
}

/** Once, when the window opens; to the left, where the page placed it. */
function enlarge() {
  if (!window.opener || window.innerWidth > kOpened) return;
  const { scrollWidth, scrollHeight } = document.scrollingElement;
  const [width, height] = days().length ? kPicker : [scrollWidth, Math.min(scrollHeight, 600)];
  const wider = width - window.innerWidth;
  window.resizeBy(wider, Math.max(0, height - window.innerHeight));
  window.moveBy(-wider, 0);
}

/** On screens where the window is a tab of its own there is no key to close it. */
async function addCloseButton() {
  const known = window.opener && matchMedia('(pointer: coarse)').matches && (await texts);
  if (!known) return;
  const button = make('button', { type: 'button', class: 'orlune-close' }, known.close);
  button.addEventListener('click', () => window.close());
  document.body.append(button);
}

export async function equipSmallWindow() {
  if (!document.querySelector('meta[name=viewport]')) {
    document.head.append(make('meta', { name: 'viewport', content: 'width=device-width, initial-scale=1' }));
  }
  if (!isSmall) return;
  document.addEventListener('keydown', ({ key }) => key === 'Escape' && window.close());
  enlarge();
  if (days().length) equipPicker();
  await addCloseButton();
}
