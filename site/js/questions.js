// Asks before something is deleted; for an event, says when a whole series goes.

import { recall, remember } from './memory.js';
import { form, queryOf } from './page.js';
import { beforeSending, begin } from './sending.js';
import { fill, knownTexts } from './texts.js';

const kRecordQuestions = { um: 'deleteUser', gm: 'deleteGroup', cm: 'deleteScheme', tm: 'deleteType' };

const valueOf = (name) => form?.elements[name]?.value ?? '';

/** A stored event's kind of repetition is what the form shows before the user chooses another. */
function rememberSeries() {
  const id = queryOf(location.href).get('id');
  if (id && form?.elements.reptype) remember('series', valueOf('reptype') === 'none' ? null : id);
}

const isSeries = () => valueOf('reptype') !== 'none' || recall('series') === valueOf('id');

/** The name of the question's text and what it names; nothing when nothing is to be asked. */
function questionOf(query) {
  const act = query.get('act') ?? '';
  const isAnyChosen = (name) => form?.querySelector(`[name=${name}]:checked`) != null;
  if (act === 'del') {
    if (query.has('msg')) return ['deleteMessage'];
    return isAnyChosen('msg') ? ['deleteMessages'] : [];
  }
  if (act === 'delete' && query.get('ret') === 'results') return isAnyChosen('id') ? ['deleteEvents'] : [];
  // The titles and names are those that are stored, not what was typed over them.
  if (act === 'delete') return [isSeries() ? 'deleteSeries' : 'deleteEvent', form.elements.title?.defaultValue];
  const name = form?.elements.name?.defaultValue;
  if (act === 'gdelete') return ['deleteGroupView', name];
  return act.endsWith('_delete') ? [kRecordQuestions[act.slice(0, 2)], name] : [];
}

let pressed = ''; // the label of the last button

/** Until the texts are known, the button's label is the question. */
function isAgreed(address) {
  const [name, what = ''] = questionOf(queryOf(address));
  const question = knownTexts()?.[name];
  return !name || window.confirm(question ? fill(question, what) : `${pressed} ${what}?`);
}

/** The message that is shown is deleted by a button that follows an address. */
function watchButtons(event) {
  const button = event.target.closest?.('input[type=button]');
  pressed = button?.value ?? '';
  const code = button?.getAttribute('onclick') ?? '';
  const [, address] = code.match(/window\.location='([^']*[?&]act=del&[^']*)'/) ?? [];
  if (!address || begin(address)) return;
  event.preventDefault();
  event.stopImmediatePropagation();
}

export function askBeforeDeleting() {
  rememberSeries();
  beforeSending(isAgreed);
  document.addEventListener('click', watchButtons, { capture: true });
}
