// The form of a new event: tells which button invites others, as a saved event cannot be sent any more.

import { form, make } from './page.js';
import { fill, texts } from './texts.js';

const buttonOf = (action) => form?.querySelector(`td > [type=button][onclick*="p=e&act=${action}'"]`);

export async function hintAtInvitation() {
  const [save, send] = [buttonOf('save'), buttonOf('sendform')];
  const hint = save && send && (await texts)?.inviteHint;
  if (hint) send.parentElement.append(make('div', { class: 'orlune-hint' }, fill(hint, send.value, save.value)));
}
