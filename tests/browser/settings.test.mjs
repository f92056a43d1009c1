import assert from 'node:assert/strict';

import { calendarSuite } from './suite.mjs';

const visit = calendarSuite();

const kName = "Zoë's & Niamh's <crew>";
const kMembers = ["Niamh O'Brien", 'Zoë Fairweather', '[Engineering]'];
const kColours = {
  zoe: ['rgb(0, 0, 128)', 'rgb(255, 255, 0)'],
  niamh: ['rgb(192, 192, 192)', 'rgb(128, 0, 0)'],
};

const kLab = '::-p-xpath((//font[contains(., "Sensor lab rota")])[last()])';

const computedColours = (element) => {
  const { backgroundColor, color } = getComputedStyle(element);
  return [backgroundColor, color];
};

async function assertPainted({ page }) {
  for (const [member, colours] of Object.entries(kColours))
    assert.deepEqual(await page.$eval(`#${member}`, computedColours), colours, member);
}

async function assertShownInColours(visitor) {
  await visitor.open('?p=c&cd=3/17/2004&dm=day');
  await visitor.fillIn({ cn: `-${kName}-` });
  await visitor.press('OK');
  assert.deepEqual(await visitor.page.$eval(kLab, computedColours), kColours.niamh);
  const popup = await visitor.popupOf('[title="Show Colour Mapping"]');
  const [width, height] = await popup.evaluate(() => [innerWidth, innerHeight]);
  assert.ok(width === 180 && Math.abs(height - 250) <= 1, `${width} x ${height}`); // Chromium may round it
  assert.deepEqual(await popup.$eval("::-p-text(Niamh O'Brien)", computedColours), kColours.niamh);
  await popup.close();
}

for (const [browser, userAgent] of [
  ['an ordinary browser', undefined],
  ['a browser that calls itself compatible', 'Mozilla/4.0 (compatible; MSIE 6.0; Windows NT 5.1)'],
]) {
  visit(`a group view is painted while it is made, with ${browser}`, { user: 'asa' }, async (visitor) => {
    if (userAgent) await visitor.page.setUserAgent({ userAgent });
    await visitor.open('?p=p&act=groups');
    await visitor.fillIn({ name: kName, cals: kMembers });
    await visitor.press('Save');
    await visitor.fillIn({ zoeBG: 'Red', zoeFG: 'Yellow', niamhBG: 'Light Gray', niamhFG: 'Dark Red' });
    await visitor.fillIn({ zoeBG: 'Dark Blue' });
    await assertPainted(visitor);
    await visitor.press('Save');
    await assertShownInColours(visitor);

    await visitor.open('?p=p&act=groups');
    await visitor.fillIn({ id: kName });
    await assertPainted(visitor);
    await visitor.press('Add Calendars');
    assert.deepEqual((await visitor.filledIn()).cals, kMembers);
    await visitor.press('Save');
    await assertPainted(visitor);
    await visitor.press('Delete');
    assert.deepEqual(visitor.takeAlerts(), [`Delete the group view “${kName}”?`]);
    assert.equal((await visitor.optionsOf('id')).includes(kName), false);
  });
}

visit('preferences are worn at once', { user: 'asa' }, async (visitor) => {
  const chosen = { mode: 'Week', firstday: 'Sunday', weekend: ['Friday', 'Saturday'], clock: '12', css: 'Dark' };
  await visitor.followLink('Preferences');
  await visitor.fillIn({ ...chosen, daybegin: '10:00', dayend: '23:00' });
  await visitor.press('Save Changes');
  assert.equal((await visitor.page.$eval('body', computedColours))[0], 'rgb(17, 21, 26)');
  await visitor.followLink('Preferences');
  assert.deepEqual(await visitor.filledIn(), { ...chosen, daybegin: '10:00 AM', dayend: '11:00 PM' });
});

const kOlivia = {
  name: "Olivia O'Hara & Son",
  intname: 'olivia',
  password: `ö'"<&>`,
  memberships: ['Office Life (office)', 'Sports Club (sport)'],
  adminships: [],
  hide: 'no',
};
const kLabel = `${kOlivia.name} (olivia)`;
const kNewPassword = `ß'<"2`;

visit('a new user logs in, changes the password, and goes again', { user: 'admin' }, async (visitor) => {
  const { page } = visitor;
  await visitor.followLink('Administration');
  await visitor.fillIn(kOlivia);
  await visitor.press('Save');
  await visitor.fillIn({ id: kLabel });
  assert.deepEqual(await visitor.filledIn(), { id: kLabel, ...kOlivia, password: '' });

  await visitor.logIn('olivia', kOlivia.password);
  await visitor.open('?p=p&act=login');
  await visitor.fillIn({ oldpw: kOlivia.password, newpw1: kNewPassword, newpw2: kNewPassword });
  await visitor.press('Change Password');
  await visitor.logIn('olivia', kNewPassword);
  assert.equal(await visitor.textOf('.calname'), kOlivia.name);

  await visitor.logIn('admin');
  await visitor.open('?p=a');
  await visitor.fillIn({ id: kLabel });
  await visitor.press('Delete');
  assert.equal(visitor.takeAlerts().length, 1);
  assert.equal((await visitor.optionsOf('id')).includes(kLabel), false);
});
