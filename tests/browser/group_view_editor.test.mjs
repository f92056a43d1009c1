import assert from 'node:assert/strict';

import { calendarSuite, kDesktop } from './calendar_suite.mjs';

const visit = calendarSuite();

const kName = "Zoë's & Niamh's <crew>";
const kNoColour = 'rgba(0, 0, 0, 0)';
const kColours = {
  zoe: ['rgb(0, 0, 128)', 'rgb(255, 255, 0)'],
  niamh: ['rgb(192, 192, 192)', 'rgb(128, 0, 0)'],
};
const kEntries = [
  { title: 'Spanish class', member: 'zoe' },
  { title: 'Sensor lab rota', member: 'niamh' },
  { title: 'Sprint planning' }, // of the group, which has no colours
];

const computedColours = (element) => {
  const { backgroundColor, color } = getComputedStyle(element);
  return [backgroundColor, color];
};

async function assertPainted({ page }, member) {
  assert.deepEqual(await page.locator(`#${member}`).evaluate(computedColours), kColours[member], member);
}

async function chooseColours(visitor) {
  const { page } = visitor;
  const ground = (member) => page.locator(`#${member}`).evaluate(computedColours);
  assert.equal((await ground('zoe'))[0], kNoColour);
  await visitor.fillIn({ zoeBG: 'Dark Blue' });
  assert.equal((await ground('zoe'))[0], kColours.zoe[0]);
  await visitor.fillIn({ zoeFG: 'Yellow', niamhBG: 'Red', niamhFG: 'Dark Red' });
  await assertPainted(visitor, 'zoe');
  await visitor.fillIn({ niamhBG: 'Light Gray' });
  await assertPainted(visitor, 'niamh');
}

async function assertRefused(visitor) {
  const chosen = { name: kName, cals: ["Niamh O'Brien", 'Zoë Fairweather', '[Engineering]'] };
  for (const [fields, alert] of [
    [{ ...chosen, name: '' }, 'Name field is empty.\n'],
    [{ ...chosen, name: 'the "crew"', cals: [] }, 'Name field must not contain quotes.\n'],
    [{ ...chosen, cals: [] }, 'You must select at least one member calendar.\n'],
  ]) {
    await visitor.fillIn(fields);
    await visitor.press('Save');
    assert.deepEqual(visitor.takeAlerts(), [alert]);
    assert.deepEqual(await visitor.filledIn(), { id: '<New View>', ...fields });
  }
  return chosen;
}

async function assertShownInColours(visitor) {
  for (const view of ['Month', 'Week']) {
    await visitor.choose({ date: '3/17/2004', calendar: `-${kName}-`, view });
    const entries = await visitor.entries();
    for (const { title, member } of kEntries) {
      const shown = entries.find(({ text }) => text.endsWith(title));
      const expected = kColours[member] ?? [undefined, undefined];
      assert.deepEqual([shown?.background, shown?.colour], expected, `${title} in the ${view}`);
    }
  }
  await visitor.choose({ view: 'Day' });
  const lab = visitor.page.locator('.event font', { hasText: 'Sensor lab rota' }).first();
  assert.deepEqual(await lab.evaluate(computedColours), kColours.niamh);
}

async function assertMapped({ page }) {
  const [popup] = await Promise.all([
    page.waitForEvent('popup'),
    page.getByTitle('Show Colour Mapping').click(),
  ]);
  await popup.waitForLoadState();
  assert.deepEqual(await popup.evaluate(() => [innerWidth, innerHeight]), [180, 250]);
  const lines = popup.locator('p');
  assert.deepEqual(await lines.allInnerTexts(), ['Engineering', "Niamh O'Brien", 'Zoë Fairweather']);
  assert.deepEqual(await lines.nth(1).evaluate(computedColours), kColours.niamh);
  assert.deepEqual(await lines.nth(2).evaluate(computedColours), kColours.zoe);
  await popup.close();
}

const kBrowsers = {
  'an ordinary browser': kDesktop,
  'a browser that calls itself compatible': {
    ...kDesktop,
    userAgent: 'Mozilla/4.0 (compatible; MSIE 6.0; Windows NT 5.1)',
  },
};

for (const [browser, window] of Object.entries(kBrowsers)) {
  visit(`a group view from nothing to its end, with ${browser}`, { user: 'asa', window }, async (visitor) => {
    const { page } = visitor;
    const reopen = async () => {
      await visitor.open('?p=p&act=groups');
      await visitor.fillIn({ id: kName });
    };
    await visitor.pressButton('Preferences');
    await visitor.pressButton('Edit Group Views');
    await visitor.fillIn(await assertRefused(visitor));
    await visitor.press('Save');
    await chooseColours(visitor);
    await visitor.press('Save');
    assert.equal((await visitor.filledIn()).id, '<New View>');
    await reopen();
    for (const member of Object.keys(kColours)) await assertPainted(visitor, member);

    await visitor.open('?p=c');
    await assertShownInColours(visitor);
    await assertMapped(visitor);

    await reopen();
    await visitor.press('Add Calendars');
    const { cals } = await visitor.filledIn();
    assert.deepEqual(cals, ["Niamh O'Brien", 'Zoë Fairweather', '[Engineering]']);
    await visitor.fillIn({ cals: [...cals, 'Mikko Järvinen'] });
    await visitor.press('Save');
    for (const member of Object.keys(kColours)) await assertPainted(visitor, member);
    assert.deepEqual(await page.locator('td[id]').allInnerTexts(), [
      'Engineering',
      'Mikko Järvinen',
      "Niamh O'Brien",
      'Zoë Fairweather',
    ]);
    await visitor.press('Delete');
    assert.equal(await page.locator('[name=id] option', { hasText: kName }).count(), 0);
    await visitor.open('?p=c');
    assert.equal(await page.locator('[name=cn] option', { hasText: kName }).count(), 0);
  });
}
