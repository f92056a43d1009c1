// The form of a group view: paints the cell of each member in its selected colours, and again at each change.

import { form } from './page.js';

const kProperties = { BG: 'backgroundColor', FG: 'color' };

function paint(list) {
  const property = list.nodeName === 'SELECT' && kProperties[list.name.slice(-2)];
  const cell = property && document.getElementById(list.name.slice(0, -2));
  if (cell) cell.style[property] = list.value;
}

export function paintGroupViews() {
  if (!form) return;
  for (const field of form.elements) paint(field);
  form.addEventListener('change', (event) => paint(event.target));
}
