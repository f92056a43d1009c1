// Tells the other parts when the page's form is sent, by its buttons' inline code or by the browser. While one sending
// is under way the next is ignored: a button that is pressed twice saves once.

import { content, form } from './page.js';

// Then the sending has failed or was stopped.
const kMilliseconds = 10_000;

const listeners = [];
let isUnderWay = false;

/** `listener` gets the address; false stops the sending. */
export const beforeSending = (listener) => listeners.push(listener);

/** Whether the form, or what follows `address`, may be sent now: all listeners agree. */
export function begin(address) {
  if (isUnderWay || !listeners.every((listener) => listener(address) !== false)) return false;
  isUnderWay = true;
  setTimeout(letGo, kMilliseconds);
  return true;
}

function letGo() {
  isUnderWay = false;
}

const beginOrStop = (event) => begin(event.target.action) || event.preventDefault();

export function watchForm() {
  window.addEventListener('pageshow', letGo);
  // A page with several forms has no name for them.
  for (const other of content?.querySelectorAll('form[method=post]:not([name])') ?? [])
    other.addEventListener('submit', beginOrStop);
  if (!form) return;
  const action = form.getAttribute('action');
  // The buttons of the page set the action and call submit().
  form.submit = () => {
    if (begin(form.action)) HTMLFormElement.prototype.submit.call(form);
    else if (!isUnderWay) form.setAttribute('action', action);
  };
  form.addEventListener('submit', (event) => {
    if (!begin(form.action)) event.preventDefault();
  });
}
