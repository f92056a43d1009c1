// Makes links of the web addresses in comments and messages.

import { content, make } from './page.js';
import { texts } from './texts.js';

const kAddress = /(?<![\p{L}\p{N}@/.])(?:https?:\/\/|www\.)[^\s<>"\u00ab\u00bb\u201c-\u201e\u3001\u3002]+/giu;
const kOpen = { ')': '(', ']': '[', '}': '{' };

const count = (text, character) => text.split(character).length;

/** Without the punctuation of the sentence behind it; a bracket belongs to the address that opens it. */
export function trimAddress(found) {
  let address = found;
  for (;;) {
    const last = address.at(-1);
    const isStray =
      last in kOpen ? count(address, last) > count(address, kOpen[last]) : /[.,;:!?'*\u2019\u2026]/.test(last);
    if (!isStray) return address;
    address = address.slice(0, -1);
  }
}

function targetOf(address) {
  try {
    const target = new URL(/^www\./i.test(address) ? `https://${address}` : address);
    return /^https?:$/.test(target.protocol) && target.hostname.includes('.') ? target.href : null;
  } catch {
    return null;
  }
}

/** Replaces the text node by its texts and links. */
function link(node) {
  for (const [found] of [...node.data.matchAll(kAddress)].reverse()) {
    const address = trimAddress(found);
    const href = targetOf(address);
    if (!href) continue;
    const rest = node.splitText(node.data.lastIndexOf(found));
    rest.splitText(address.length);
    rest.replaceWith(make('a', { href, target: '_blank', rel: 'noopener', class: 'orlune-address' }, address));
  }
}

export async function linkAddresses() {
  if (!content) return;
  const kSkipped = 'a, textarea, select, script, style, label, td.captions, .secret';
  const walker = document.createTreeWalker(content, NodeFilter.SHOW_TEXT);
  const found = [];
  while (walker.nextNode()) {
    const node = walker.currentNode;
    if (/https?:\/\/|www\./i.test(node.data) && !node.parentElement.closest(kSkipped)) found.push(node);
  }
  for (const node of found) link(node);
  const known = found.length && (await texts);
  if (known) for (const one of content.querySelectorAll('.orlune-address')) one.title = known.opensNewTab;
}
