// Enhances the pages, which work without it. The shipped configuration links it in HeadData.

// Group views: paints the cell of each member in its selected colours, and again at each change.
(function () {
  const form = document.forms.acForm;
  if (!form) return;
  const properties = { BG: 'backgroundColor', FG: 'color' };

  function paint(list) {
    const property = list.nodeName === 'SELECT' && properties[list.name.slice(-2)];
    const cell = property && document.getElementById(list.name.slice(0, -2));
    if (cell) cell.style[property] = list.value;
  }

  for (const field of form.elements) paint(field);
  form.addEventListener('change', (event) => paint(event.target));
})();
