// Tells the other parts when the page's form is sent, by its buttons' inline code or by the browser.

import { form } from './page.js';

const listeners = [];

/** `listener` gets the address; false stops the sending. */
export const beforeSending = (listener) => listeners.push(listener);

/** Whether all listeners agree. */
export const maySend = (address) => listeners.every((listener) => listener(address) !== false);

export function watchForm() {
  if (!form) return;
  const action = form.getAttribute('action');
  // The buttons of the page set the action and call submit().
  form.submit = () => {
    if (maySend(form.action)) HTMLFormElement.prototype.submit.call(form);
    else form.setAttribute('action', action);
  };
  form.addEventListener('submit', (event) => {
    if (!maySend(form.action)) event.preventDefault();
  });
}
