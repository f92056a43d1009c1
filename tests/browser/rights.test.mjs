import assert from 'node:assert/strict';

import { calendarSuite } from './calendar_suite.mjs';

const visit = calendarSuite();

const kEditable = 'with a link to edit it';
const kReadable = 'without a link';
const kAbsent = 'not at all';

function presenceOf(title, entries) {
  const found = entries.filter(({ text }) => text.endsWith(title));
  if (found.length === 0) return kAbsent;
  const editable = found.filter(({ isEditable }) => isEditable).length;
  assert.ok(editable === 0 || editable === found.length, `${title} is editable on some days only`);
  return editable ? kEditable : kReadable;
}

// "School run" is private.
const kShown = {
  niamh: [
    ['niamh', 'Sensor lab rota', kEditable],
    ['niamh', 'Sprint planning', kReadable],
    ['engineering', 'Sprint planning', kReadable],
    ['@engineeringteam', 'Sensor lab rota', kEditable],
    ['@engineeringteam', 'One to one: Niamh', kReadable],
  ],
  jurgen: [
    ['niamh', 'Sensor lab rota', kReadable],
    ['engineering', 'Sprint planning', kEditable],
    ['engineering', 'All-hands', kReadable],
    ['priya', 'Code reading circle', kReadable],
    ['priya', 'School run', kAbsent],
    ['@engineeringteam', 'School run', kAbsent],
  ],
  priya: [['priya', 'School run', kEditable]],
  admin: [
    ['engineering', 'All-hands', kEditable],
    ['niamh', 'Sensor lab rota', kReadable],
    ['priya', 'School run', kAbsent],
  ],
};

for (const [user, cases] of Object.entries(kShown)) {
  visit(`${user} sees and may edit what belongs to them`, { user }, async (visitor) => {
    for (const [calendar, title, expected] of cases) {
      await visitor.open(`?p=c&dm=month&cn=${calendar}`);
      assert.equal(presenceOf(title, await visitor.entries()), expected, `${title} in ${calendar}`);
    }
  });
}

const kOffered = [
  { user: 'walter', offersHisCalendar: true, hasAdministration: false },
  { user: 'grace', offersHisCalendar: false, hasAdministration: false },
  { user: 'admin', offersHisCalendar: false, hasAdministration: true },
];

for (const { user, offersHisCalendar, hasAdministration } of kOffered) {
  visit(`${user} is offered what is meant for them`, { user }, async ({ page }) => {
    const calendars = await page.locator('[name=cn] option').allTextContents();
    assert.ok(calendars.map((label) => label.trim()).includes('Grace Okafor'));
    assert.equal(
      calendars.some((label) => label.includes('Walter Strand')),
      offersHisCalendar,
    );
    assert.equal((await page.getByAltText('Administration').count()) === 1, hasAdministration);
  });
}
