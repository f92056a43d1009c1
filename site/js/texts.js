// The script's own texts in the language of the page, asked from the server once per hour and window.

import { recall, remember } from './memory.js';
import { companion } from './page.js';

const kMilliseconds = 3_600_000;

// Another version of the script may have other texts.
const kName = `texts of ${import.meta.url}`;

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
    remember(kName, { texts, when: Date.now() });
    return texts;
  } catch {
    return null;
  }
}

const kept = recall(kName);
let known = kept && Math.abs(Date.now() - kept.when) < kMilliseconds ? kept.texts : null;

/** Resolves to the texts by name; null when the server has none. */
export const texts = known ? Promise.resolve(known) : ask();

texts.then((answer) => (known = answer));

/** The texts if they are known already; null otherwise. */
export const knownTexts = () => known;

/** The text with `first` for %s and `second` for %t. */
export const fill = (text, first, second) => text.replace(/%[st]/g, (found) => (found === '%s' ? first : second));
