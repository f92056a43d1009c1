// Tells once what became of a form that was sent, and keeps what was typed when the session had ended meanwhile, until
// the same user has logged in again. Passwords are not kept.

import { forget, recall, remember, take } from './memory.js';
import { content, form, isLogin, make, onLogout, post, queryOf, user } from './page.js';
import { beforeSending } from './sending.js';
import { texts } from './texts.js';

// Milliseconds. Screen readers tell what changes in a status that they know already.
const kUntilKnown = 100;
const kUntilSilent = 8000;

function successOf(query) {
  const act = query.get('act') ?? '';
  const isList = form && ((act === 'del' && !query.has('msg')) || query.get('ret') === 'results');
  if (isList && !form.querySelector('[type=checkbox]:checked')) return null;
  if (/^(save|lsave|gsave|.._save)$/.test(act)) return 'saved';
  if (/^(send|notify)$/.test(act)) return 'sent';
  return /^(delete|del|gdelete|.._delete)$/.test(act) ? 'deleted' : null;
}

/** The query that shows the form again; null when there is nothing in it to be kept. */
function formQuery(query) {
  const act = query.get('act') ?? '';
  switch (query.get('p')) {
    case 'e':
      if (act === '' || act === 'save') return 'p=e';
      if (act === 'send' || act === 'sendform') return 'p=e&act=sendform';
      return act === 'notify' ? location.search.slice(1) : null;
    case 'm':
      return act === 'send' ? 'p=m&act=new' : null;
    case 'p':
      return { save: 'p=p', gsave: 'p=p&act=groups' }[act] ?? null;
    case 'a':
      return /^.._save$/.test(act) ? `p=a&act=${act.slice(0, 2)}_list` : null;
    default:
      return null;
  }
}

function typedFields() {
  const isPassword = (name) => form.querySelector(`[type=password][name="${CSS.escape(name)}"]`) !== null;
  return [...new FormData(form)].filter(([name, value]) => typeof value === 'string' && !isPassword(name));
}

function noteSending(address) {
  const query = queryOf(address);
  const shownBy = user && form ? formQuery(query) : null;
  remember('sent', {
    user,
    query: query.toString(),
    success: successOf(query),
    draft: shownBy && { user, query: shownBy, fields: typedFields() },
  });
}

/** After success the server redirects, or shows the page of that address without an alert. */
function hasSucceeded({ query }) {
  const hasAlert = [...document.scripts].some((script) => !script.src && script.text.includes('alert('));
  const [arrival] = performance.getEntriesByType('navigation');
  return !hasAlert && (arrival?.redirectCount > 0 || queryOf(location.href).toString() === query);
}

async function say(name) {
  const status = make('div', { class: 'orlune-status', role: 'status' });
  document.body.append(status);
  const told = (await texts)?.[name];
  if (!told) return;
  await new Promise((resolve) => {
    setTimeout(resolve, kUntilKnown);
  });
  const silence = () => status.replaceChildren();
  const close = make('button', { type: 'button', 'aria-label': (await texts).close }, '\u00d7');
  close.addEventListener('click', silence);
  // A page that is shown again by the back button has told it already.
  window.addEventListener('pagehide', silence);
  status.append(told, ' ', close);
  setTimeout(silence, kUntilSilent);
}

/** Pages of nobody: the session has ended. An error page may also refuse one who is still logged in. */
function keepDraft(sent) {
  if (sent?.draft) remember('draft', { ...sent.draft, isDoubtful: !isLogin });
  else if (isLogin && recall('draft')) remember('draft', { ...recall('draft'), isDoubtful: false });
}

export function tellOutcome() {
  beforeSending(noteSending);
  if (!content && !document.querySelector('center > h1')) return undefined;
  const sent = take('sent');
  if (!user) return keepDraft(sent);
  if (sent?.success && sent.user === user && hasSucceeded(sent)) return say(sent.success);
  return undefined;
}

function fillIn(fields) {
  for (const field of form.elements) {
    if (/^(hidden|password|button|submit)$/.test(field.type)) continue;
    const values = fields.filter(([name]) => name === field.name).map(([, value]) => value);
    if (/^(radio|checkbox)$/.test(field.type)) field.checked = values.includes(field.value);
    else if (field.options) for (const option of field.options) option.selected = values.includes(option.value);
    else if (values.length) [field.value] = values;
  }
}

/** Null when there is none of this user. */
function ownDraft() {
  const draft = recall('draft');
  if (!draft || (draft.user === user && !draft.isDoubtful)) return draft;
  forget('draft');
  return null;
}

function restore(draft) {
  forget('draft');
  remember('restored', draft);
  post(draft.query, draft.fields);
}

function addNote(...content) {
  const note = make('div', { class: 'orlune-note', role: 'alert' }, ...content);
  document.body.prepend(note);
  return note;
}

/** On the login page, which is shown instead of the form's answer. */
async function tellKept() {
  const known = await texts;
  if (known && recall('draft')) addNote(known.draftKept);
}

/** Offers what was typed before the session ended; on the page of that form, fills it in. */
export async function offerDraft() {
  if (isLogin) await tellKept();
  if (!user) return;
  onLogout(() => forget('draft'));
  const restored = take('restored');
  if (restored && form && queryOf(location.href).toString() === new URLSearchParams(restored.query).toString())
    fillIn(restored.fields);
  const draft = ownDraft();
  if (!draft || !(await texts)) return;
  const { draftKept, draftRestore, draftDiscard } = await texts;
  const button = (label) => make('button', { type: 'button' }, label);
  const [again, never] = [button(draftRestore), button(draftDiscard)];
  const note = addNote(draftKept, ' ', again, ' ', never);
  again.addEventListener('click', () => restore(draft));
  never.addEventListener('click', () => {
    forget('draft');
    note.remove();
  });
  window.addEventListener('pageshow', () => recall('draft') || note.remove());
}
