import assert from 'node:assert/strict';

import { Manager } from './administration.mjs';
import { calendarSuite } from './calendar_suite.mjs';

const visit = calendarSuite({ DemoMode: true });

visit('a demonstration says how to log in, and keeps it true', {}, async (visitor) => {
  const { page } = visitor;
  const users = new Manager(visitor, 'um');
  await visitor.open();
  await page.getByText('Username: admin, password: demo1').waitFor();
  await visitor.submitLogin('admin', 'demo1');

  await users.open('Daniel Kim (daniel)');
  assert.equal(await page.locator('[name=password]').getAttribute('type'), 'password');
  await users.open('Administrator (admin)');
  assert.equal(await page.locator('[name=password]').getAttribute('type'), 'hidden');
  await page.getByText('[changing disabled').waitFor();
  await users.save({ name: 'The Boss' }, 'Administrator (admin)');
  await visitor.logIn('admin', 'demo1');
  assert.equal(await visitor.calendarTitle(), 'The Boss');
});
