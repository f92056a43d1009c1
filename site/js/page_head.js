// Tells browsers and screen readers about the page: its language, its window title, its landmarks, the way past the
// toolbar.

import { content, form, isView, make, plainText } from './page.js';
import { texts } from './texts.js';

// Captions are in capitals. In these languages the words of a caption begin with a capital letter, in others the first.
const kCapitalisedWords = /^(en|de)\b/;

export function inMixedCase(caption, language) {
  const lower = caption.toLocaleLowerCase(language);
  const isWord = kCapitalisedWords.test(language);
  return lower.replace(isWord ? /(?<![\p{L}\p{N}'\u2019])\p{L}/gu : /\p{L}/u, (letter) =>
    letter.toLocaleUpperCase(language),
  );
}

function windowTitle(language) {
  const text = (selector) => plainText(document.querySelector(selector)?.textContent ?? '');
  const caption = inMixedCase(text('.caltitle, center > h1'), language);
  const shown = isView ? '' : (form?.elements.title?.defaultValue ?? '');
  return [shown, caption, text('.calname'), document.title].filter((part) => part).join(' - ');
}

function addSkipLink(known) {
  const link = make('a', { class: 'orlune-skip', href: '#orlune-content' }, known.skipToContent);
  content.id = 'orlune-content';
  document.body.prepend(link);
}

function addLandmarks(known) {
  const frame = content.closest('table');
  const toolbar = frame.rows[0].cells[1];
  frame.setAttribute('role', 'presentation');
  content.setAttribute('role', 'main');
  if (!toolbar?.querySelector('a')) return;
  toolbar.setAttribute('role', 'navigation');
  toolbar.setAttribute('aria-label', known.toolbar);
}

export async function describePage() {
  document.querySelector('td.today')?.setAttribute('aria-current', 'date');
  const known = await texts;
  if (!known) return;
  document.documentElement.lang = known.language;
  document.documentElement.dir = known.direction;
  document.title = windowTitle(known.language);
  if (!content || !document.querySelector('.caltitle')) return;
  addSkipLink(known);
  addLandmarks(known);
}
