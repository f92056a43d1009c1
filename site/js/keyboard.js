// Typing begins at once: the cursor is in the first field, and Enter in a line presses the first button.

import { form, isLogin, isView } from './page.js';

const kLines = 'input:is([type=text], [type=password], :not([type]))';

/** Forms without a submit button leave Enter without an effect, or send it to the wrong address. */
export function handleEnter() {
  form?.addEventListener('keydown', (event) => {
    if (event.key !== 'Enter' || event.isComposing || !event.target.matches(kLines)) return;
    const fields = [...form.elements];
    const button = fields.find(({ type }) => type === 'button');
    if (!button || fields.some(({ type }) => type === 'submit')) return;
    event.preventDefault();
    button.click();
  });
}

/**
 * Not where it would open the keyboard of the screen, and not on views and lists, which are read first. A filled-in
 * event that is to be sent only lacks its recipients.
 */
export function placeCursor() {
  const recipients = form?.elements.title?.value ? form.elements.vastaanottaja : null;
  recipients?.scrollIntoView({ block: 'center' });
  const isFree = document.activeElement === null || document.activeElement === document.body;
  const isList = form?.querySelector('[type=checkbox]:is([name=id], [name=msg])') != null;
  if (!form || isLogin || isView || isList || !isFree || matchMedia('(pointer: coarse)').matches) return;
  const first = [...form.elements].find((candidate) => candidate.matches(`${kLines}, select, textarea`));
  if (recipients) recipients.focus();
  else first?.focus({ preventScroll: true });
}
