// Lists that send the form at each change ("Repeat", the lists of records) wait for a choice by keyboard: arrow keys
// and letters move on, Enter or leaving the list sends, Escape goes back. Afterwards the list has the focus again.

import { remember, take } from './memory.js';
import { form } from './page.js';
import { texts } from './texts.js';

const isSending = (field) => field.nodeName === 'SELECT' && /submit\(\)/.test(field.getAttribute('onchange'));

const chosen = (list) => [...list.options].map((option) => option.selected);

const isMoving = ({ key, altKey, ctrlKey, metaKey }) =>
  !altKey && !ctrlKey && !metaKey && /^(Arrow.+|Page.+|Home|End|[^ ])$/u.test(key);

function makeWait(list) {
  const initial = chosen(list);
  let isMoved = false; // by a key, and not sent yet
  let isKeyed = false; // a key that moves is being handled; an opened list keeps its keys to itself

  const send = () => {
    isMoved = false;
    if (chosen(list).some((isSelected, i) => isSelected !== initial[i]))
      list.dispatchEvent(new Event('change', { bubbles: true }));
  };
  const goBack = () => {
    isMoved = false;
    for (const [i, option] of [...list.options].entries()) option.selected = initial[i];
  };

  list.addEventListener('keydown', (event) => {
    isKeyed = isMoving(event);
    setTimeout(() => {
      isKeyed = false;
    });
    if (!isMoved || !['Enter', 'Escape'].includes(event.key)) return;
    event.preventDefault();
    if (event.key === 'Enter') send();
    else goBack();
  });
  // Before the inline code of the page, which sends.
  const hold = (event) => {
    isMoved = isKeyed;
    if (isKeyed) event.stopImmediatePropagation();
    else remember('focus', list.name);
  };
  list.addEventListener('change', hold, { capture: true });
  list.addEventListener('blur', () => isMoved && send());
}

export async function makeListsWait() {
  const lists = [...(form?.elements ?? [])].filter(isSending);
  const focused = take('focus');
  lists.find((list) => list.name === focused)?.focus();
  for (const list of lists) makeWait(list);
  const known = await texts;
  if (known) for (const list of lists) list.setAttribute('aria-description', known.applyChoice);
}
