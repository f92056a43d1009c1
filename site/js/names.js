// Names the fields, lists, icons and links that the page leaves without one, for screen readers and as tooltips.

import { content, plainText } from './page.js';
import { fill, texts } from './texts.js';

const isText = (node) => node?.nodeType === Node.TEXT_NODE;

function textBefore(field) {
  let text = '';
  for (let node = field.previousSibling; isText(node); node = node.previousSibling) text = node.data + text;
  return plainText(text);
}

function textAfter(field) {
  let text = '';
  for (let node = field.nextSibling; isText(node); node = node.nextSibling) text += node.data;
  return plainText(text);
}

/** The first line of a cell, which may be followed by a hint; empty for a cell with a field. */
function captionOf(cell) {
  if (cell?.querySelector('input:not([type=hidden]), select, textarea')) return '';
  const lines = [...(cell?.childNodes ?? [])];
  const end = lines.findIndex((node) => node.nodeName === 'BR');
  return plainText((end < 0 ? lines : lines.slice(0, end)).map((node) => node.textContent).join(''));
}

/** From the text beside the field: before it, in the first cell of its row, in the cell above. */
function nameOf(field) {
  const cell = field.closest('td');
  const row = cell?.parentElement;
  const above = () => row.previousElementSibling?.cells[cell.cellIndex];
  if (field.type === 'radio') return textAfter(field);
  if (field.name === 'msg') return plainText(row.querySelector('a')?.textContent ?? '');
  if (/.[BF]G$/.test(field.name) && row.cells.length === 3)
    return `${captionOf(row.cells[0])}: ${captionOf(row.parentElement.rows[0].cells[cell.cellIndex])}`;
  return (
    textBefore(field) ||
    plainText(field.closest('[role=group]')?.getAttribute('aria-label') ?? '') ||
    captionOf(cell?.cellIndex > 0 ? row.cells[0] : row && above())
  );
}

const isNamed = (field) => field.labels.length > 0 || field.hasAttribute('aria-label') || field.title;

/** Names that say more than the page, by the name of the field. */
function betterName(field, known) {
  const title = () => plainText(field.closest('tr').cells[0].querySelector('a')?.textContent ?? '');
  if (field.name === 'time1') return known.startTime;
  if (field.name === 'time2') return known.endTime;
  if (field.name === 'Sisalto') return known.messageText;
  if (field.name === 'msg') return fill(known.select, nameOf(field));
  if (field.name === 'id' && field.type === 'checkbox') return title() && fill(known.select, title());
  return /^cd\d+$/.test(field.name) && title() ? fill(known.occurrencesOf, title()) : null;
}

// For password managers.
const kAutocomplete = {
  Name: 'username',
  Passwd: 'current-password',
  oldpw: 'current-password',
  newpw1: 'new-password',
  newpw2: 'new-password',
  password: 'new-password',
};

export async function nameFields() {
  const fields = [
    ...document.querySelectorAll('input:not([type=hidden], [type=button], [type=submit]), select, textarea'),
  ];
  for (const field of fields) {
    const name = isNamed(field) ? '' : nameOf(field);
    if (name) field.setAttribute('aria-label', name);
    if (Object.hasOwn(kAutocomplete, field.name)) field.autocomplete = kAutocomplete[field.name];
  }
  const known = await texts;
  for (const field of known ? fields : []) {
    const name = betterName(field, known);
    if (name) field.setAttribute('aria-label', name);
  }
}

/** The icon before an event carries its comments. */
function describeEvent(icon) {
  icon.title = icon.alt;
  const link = icon.nextElementSibling;
  if (link?.matches('a[href*="p=e&id="]')) link.title = `${link.title}\n${icon.alt}`;
}

/** A link around a paragraph is two for browsers, the first of them empty: a stop of the Tab key without a use. */
export function skipEmptyLinks() {
  for (const link of content?.querySelectorAll('a:empty') ?? []) {
    link.tabIndex = -1;
    link.ariaHidden = 'true';
  }
}

export async function nameImages() {
  for (const link of document.querySelectorAll('a:not([title]) > img[alt]')) link.parentElement.title = link.alt;
  if (!content) return;
  for (const icon of content.querySelectorAll('td > img[alt]:not([alt=""])')) describeEvent(icon);
  const icons = content.querySelectorAll('img:not([alt])');
  for (const icon of icons) icon.alt = '';
  const known = await texts;
  for (const icon of known ? icons : []) {
    if (icon.src.endsWith('msg_newmail.gif')) icon.alt = known.messageNew;
    if (icon.src.endsWith('msg_oldmail.gif')) icon.alt = known.messageRead;
  }
}
