import assert from 'node:assert/strict';

import { calendarSuite } from './calendar_suite.mjs';

const visit = calendarSuite();

const kTitle = `Daniel's "barge" trip`;
const kNote = `Sorry, I'm <not> free.`;

visit('a suggestion comes to the calendars of those who accept it', {}, async (visitor) => {
  const { page } = visitor;
  const newBefore = {};
  for (const user of ['grace', 'ines', 'niamh']) {
    await visitor.logIn(user);
    newBefore[user] = await visitor.newMessages();
  }

  await visitor.logIn('daniel');
  await visitor.open('?p=e');
  await visitor.fillIn({ title: kTitle, date1: '3/24/2004', time1: '09:30 AM', time2: '11:00 AM' });
  await visitor.press('Send');
  await visitor.press('Send');
  assert.deepEqual(visitor.takeAlerts(), ['No recipients have been selected.\n']);
  // The office is Daniel, Grace and Inês.
  await visitor.fillIn({ vastaanottaja: ['[Office Life]', "Niamh O'Brien"] });
  await visitor.press('Send');
  assert.deepEqual(await visitor.daysOf(kTitle), [24]);

  const answer = async (user, button, note) => {
    await visitor.openMessage(kTitle);
    await visitor.press(button);
    assert.equal(await visitor.caption(), 'NOTIFICATION');
    await visitor.fillIn({ addinfo: note });
    await visitor.press('Send Message');
    assert.equal(await visitor.caption(), 'MESSAGES');
  };
  const daysIn = async (user) => {
    await visitor.open(`?p=c&dm=month&cn=${user}&cd=3/24/2004`);
    return visitor.daysOf(kTitle);
  };
  for (const { user, button, note, days } of [
    { user: 'grace', button: 'Accept', note: '', days: [24] },
    { user: 'ines', button: 'Accept', note: 'With pleasure', days: [24] },
    { user: 'niamh', button: 'Decline', note: kNote, days: [] },
  ]) {
    await visitor.logIn(user);
    assert.equal((await visitor.newMessages()) - newBefore[user], 1, user);
    assert.deepEqual(await daysIn(user), [], `${user} before the answer`);
    await answer(user, button, note);
    assert.deepEqual(await daysIn(user), days, `${user} after the answer`);
    assert.equal((await visitor.newMessages()) - newBefore[user], 0, user);
  }

  const states = async () => {
    await daysIn('daniel');
    await visitor.openEntry('barge');
    const lines = await page.getByRole('group', { name: 'Status:' }).innerText();
    return lines.replaceAll('\u00a0', ' ').trim().split('\n').sort();
  };
  await visitor.logIn('daniel');
  assert.deepEqual(await states(), [
    'Grace Okafor:  accepted',
    'Inês Duarte:  accepted',
    "Niamh O'Brien:  declined",
  ]);
  assert.deepEqual((await visitor.messages()).slice(-3), [
    { sender: 'Grace Okafor', subject: `I have accepted event '${kTitle}'`, isNew: true },
    { sender: 'Inês Duarte', subject: `I have accepted event '${kTitle}'`, isNew: true },
    { sender: "Niamh O'Brien", subject: `I have declined event '${kTitle}'`, isNew: true },
  ]);
  await visitor.openMessage(`I have declined event '${kTitle}'`);
  assert.match(await page.innerText('.background'), new RegExp(kNote));

  await visitor.logIn('ines');
  await answer('ines', 'Decline', '');
  assert.deepEqual(await daysIn('ines'), []);
  await visitor.logIn('daniel');
  assert.deepEqual(await states(), [
    'Grace Okafor:  accepted',
    'Inês Duarte:  declined',
    "Niamh O'Brien:  declined",
  ]);
  await visitor.openMessage(`I have declined event '${kTitle}'`);
  assert.match(await page.innerText('.background'), /\(No further information was provided\)/);
});
