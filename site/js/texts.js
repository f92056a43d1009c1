// The script's own texts in the language of the page, asked from the server once per window.

import { recall, remember } from './memory.js';
import { companion } from './page.js';

function isLanguage(tag) {
  try {
    return Intl.getCanonicalLocales(tag).length === 1;
  } catch {
    return false;
  }
}

async function ask() {
  try {
    const answer = await fetch(companion('texts'));
    if (!answer.ok) return null;
    const texts = await answer.json();
    if (!isLanguage(texts.language)) texts.language = 'en';
    remember('texts', texts);
    return texts;
  } catch {
    return null;
  }
}

// The kept texts are shown at once; the answer, which may be in another language by now, is for the next page.
const kept = recall('texts');
const asked = ask();

/** Resolves to the texts by name; null when the server has none. */
export const texts = kept ? Promise.resolve(kept) : asked;

/** The texts if they are known already; null otherwise. */
let known = kept;
texts.then((answer) => (known = answer));
export const knownTexts = () => known;

/** The text with its placeholder replaced. */
export const fill = (text, value) => text.replace('%s', () => value);
