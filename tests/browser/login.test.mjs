import assert from 'node:assert/strict';

import { calendarSuite } from './calendar_suite.mjs';

const visit = calendarSuite();

visit('the calendar asks for a login, with the cursor in the name', {}, async (visitor) => {
  await visitor.open();
  assert.equal(await visitor.caption(), 'CALENDAR LOGIN');
  await visitor.waitForFocus('Name');
});

const kRefused = [
  { what: 'an unknown name', name: 'nobody', alert: 'Incorrect username.\n', focus: 'Name' },
  { what: 'the name of a group', name: 'sales', alert: 'Incorrect username.\n', focus: 'Name' },
  { what: 'a name with quotes', name: `o'bri"en`, alert: 'Incorrect username.\n', focus: 'Name' },
  {
    what: 'a wrong password',
    name: 'niamh',
    password: 'Demo1',
    alert: 'Incorrect password.\n',
    focus: 'Passwd',
  },
];

for (const { what, name, password = 'demo1', alert, focus } of kRefused) {
  visit(`${what} is refused, and the next try may succeed`, {}, async (visitor) => {
    await visitor.logIn(name, password);
    assert.deepEqual(visitor.takeAlerts(), [alert]);
    await visitor.waitForFocus(focus);
    assert.equal(await visitor.page.inputValue('[name=Name]'), name);
    assert.equal(await visitor.page.inputValue('[name=Passwd]'), '');

    await visitor.submitLogin('niamh', 'demo1');
    assert.equal(await visitor.calendarTitle(), "Niamh O'Brien");
  });
}

visit('each user starts with their own calendar and view', {}, async (visitor) => {
  for (const [user, title, caption] of [
    ['asa', 'Åsa Lindqvist', 'MARCH 2004'],
    ['grace', 'Grace Okafor', 'WEEK 12 - MAR 2004'],
    ['tomas', 'Tomás Herrera', 'MONDAY, MARCH 15, 2004'],
  ]) {
    await visitor.logIn(user);
    assert.deepEqual([await visitor.calendarTitle(), await visitor.caption()], [title, caption]);
  }
});

visit('logging out ends the session', { user: 'asa' }, async (visitor) => {
  await visitor.follow(() => visitor.page.click('text="Logout asa"'));
  assert.equal(await visitor.caption(), 'CALENDAR LOGIN');
  await visitor.open('?p=c&cn=asa');
  assert.equal(await visitor.caption(), 'CALENDAR LOGIN');
});
