// Asks before something is deleted; for an event, says when a whole series goes.

import { recall, remember } from './memory.js';
import { form, queryOf } from './page.js';
import { beforeSending, maySend } from './sending.js';
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

function isAgreed(address) {
  const texts = knownTexts();
  const [question, what = ''] = questionOf(queryOf(address));
  return !texts?.[question] || window.confirm(fill(texts[question], what));
}

/** The message that is shown is deleted by a button that follows an address. */
function askForButtons(event) {
  const code = event.target.closest?.('input[type=button]')?.getAttribute('onclick') ?? '';
  const [, address] = code.match(/window\.location='([^']*[?&]act=del&[^']*)'/) ?? [];
  if (!address || maySend(address)) return;
  event.preventDefault();
  event.stopImmediatePropagation();
}

export function askBeforeDeleting() {
  rememberSeries();
  beforeSending(isAgreed);
  document.addEventListener('click', askForButtons, { capture: true });
}
