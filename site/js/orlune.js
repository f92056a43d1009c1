// What the pages do beyond their HTML. The shipped configuration links it with HeadData.

// Group views: the cell of a member is painted in the colours that are chosen for it, again at every choice.
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
