// Tells the other parts when the page's form is sent, by its buttons' inline code or by the browser. While one sending is
// under way the next is ignored: a button that is pressed twice saves once.

import { form } from './page.js';

// Then the sending has failed or was stopped.
const kMilliseconds = 10_000;

const listeners = [];
let isUnderWay = false;

/** `listener` gets the address; false stops the sending. */
export const beforeSending = (listener) => listeners.push(listener);

/** Whether all listeners agree. */
export const maySend = (address) => listeners.every((listener) => listener(address) !== false);

function begin(address) {
  if (isUnderWay || !maySend(address)) return false;
  isUnderWay = true;
  setTimeout(letGo, kMilliseconds);
  return true;
}

function letGo() {
  isUnderWay = false;
}

export function watchForm() {
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
  window.addEventListener('pageshow', letGo);
}
