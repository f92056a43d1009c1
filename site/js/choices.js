// Lists that send the form at each change ("Repeat", the lists of records) wait for a choice by keyboard: arrow keys
// and letters move on, Enter or leaving the list sends, Escape goes back. Afterwards the list has the focus again.

import { remember, take } from './memory.js';
import { form } from './page.js';
import { texts } from './texts.js';

const isSending = (field) => field.nodeName === 'SELECT' && /submit\(\)/.test(field.getAttribute('onchange'));

const chosen = (list) => [...list.options].map((option) => option.selected);

function makeWait(list) {
  const initial = chosen(list);
  let isMoved = false; // by a key while the list was closed, and not sent yet
  let isKeyed = false; // the last input was a key that moves
  let isOpen = false;

  const hasChanged = () => chosen(list).some((isSelected, i) => isSelected !== initial[i]);
  const send = () => {
    isKeyed = isMoved = false;
    if (hasChanged()) list.dispatchEvent(new Event('change', { bubbles: true }));
  };

  list.addEventListener('pointerdown', () => {
    isKeyed = false;
    isOpen = list.size < 2;
  });
  list.addEventListener('keydown', (event) => {
    const isOpening = (event.altKey && event.key.startsWith('Arrow')) || event.key === ' ' || event.key === 'F4';
    if (isOpening && list.size < 2) isOpen = true;
    isKeyed = event.key !== 'Enter' && event.key !== ' ';
    if (event.key === 'Escape' && isMoved && !isOpen) {
      for (const [i, option] of [...list.options].entries()) option.selected = initial[i];
      isMoved = false;
    }
    if (event.key === 'Escape') isOpen = false;
    if (event.key !== 'Enter' || !isMoved) return;
    event.preventDefault();
    send();
  });
  // Before the inline code of the page, which sends.
  list.addEventListener(
    'change',
    (event) => {
      const waits = isKeyed && !isOpen;
      isMoved = waits;
      isOpen = false;
      if (waits) event.stopImmediatePropagation();
      else remember('focus', list.name);
    },
    { capture: true },
  );
  list.addEventListener('blur', () => {
    isOpen = false;
    if (isMoved) send();
  });
}

export async function makeListsWait() {
  const lists = [...(form?.elements ?? [])].filter(isSending);
  const focused = take('focus');
  lists.find((list) => list.name === focused)?.focus();
  for (const list of lists) makeWait(list);
  const known = await texts;
  if (known) for (const list of lists) list.setAttribute('aria-description', known.applyChoice);
}
