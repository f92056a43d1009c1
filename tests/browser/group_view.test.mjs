import assert from 'node:assert/strict';

import { calendarSuite } from './calendar_suite.mjs';

const visit = calendarSuite();

const kEntries = [
  { title: 'Spanish class', background: 'rgb(128, 0, 128)', colour: 'rgb(255, 255, 255)' },
  { title: 'Guitar with the band', background: 'rgb(0, 255, 255)', colour: 'rgb(0, 0, 0)' },
  { title: 'Call with the Gulf office', background: 'rgb(128, 128, 0)', colour: 'rgb(255, 255, 255)' },
  { title: 'One to one: Zoë' },
];

visit('a group view shows every member in their own colours', { user: 'asa' }, async (visitor) => {
  for (const view of ['Month', 'Week']) {
    await visitor.choose({ calendar: '-Sales Floor-', view });
    assert.equal(await visitor.calendarTitle(), 'Sales Floor');
    const entries = await visitor.entries();
    for (const { title, background, colour } of kEntries) {
      const shown = entries.filter(({ text }) => text.endsWith(title));
      assert.ok(shown.length > 0, `${title} in the ${view}`);
      for (const entry of shown)
        assert.deepEqual([entry.background, entry.colour], [background, colour], title);
    }
  }
});

visit('the same entries have no colours in the calendar of one member', { user: 'asa' }, async (visitor) => {
  await visitor.choose({ calendar: 'Zoë Fairweather', view: 'Month' });
  const entries = await visitor.entries();
  assert.ok(entries.some(({ text }) => text.endsWith('Spanish class')));
  assert.deepEqual(
    entries.filter(({ background, colour }) => background ?? colour),
    [],
  );
});

visit('the colours of the members are offered in group views only', { user: 'asa' }, async (visitor) => {
  const link = visitor.page.getByTitle('Show Colour Mapping');
  assert.equal(await link.count(), 0);
  await visitor.choose({ calendar: '-Engineering Team-' });
  assert.equal(await link.textContent(), 'Colours');
});
