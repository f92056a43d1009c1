import assert from 'node:assert/strict';

import { calendarSuite } from './calendar_suite.mjs';

const visit = calendarSuite();

const kSubject = `Åsa's <b>"keys"</b> & 🔑`;
const kContent = `Who's got them?\n\nI left them on the desk of Zoë, beside the very old <coffee> machine.`;

async function write(visitor, fields) {
  await visitor.open('?p=m&act=new');
  await visitor.fillIn(fields);
  await visitor.press('Send Message');
}

visit('a message to a group and its member comes once, is read and answered', {}, async (visitor) => {
  const { page } = visitor;
  const newBefore = {};
  for (const user of ['grace', 'ines']) {
    await visitor.logIn(user);
    newBefore[user] = await visitor.newMessages();
  }
  await visitor.logIn('asa');
  await write(visitor, {
    Vastaanottaja: ['Grace Okafor', '[Office Life]'],
    Otsikko: kSubject,
    Sisalto: kContent,
  });
  assert.equal(await visitor.caption(), 'MESSAGES');

  for (const user of ['ines', 'grace']) {
    await visitor.logIn(user);
    assert.equal((await visitor.newMessages()) - newBefore[user], 1, user);
    const copies = (await visitor.messages()).filter(({ sender }) => sender === 'Åsa Lindqvist');
    assert.deepEqual(
      copies.filter(({ isNew }) => isNew),
      [{ sender: 'Åsa Lindqvist', subject: `Åsa's "keys" & 🔑`, isNew: true }],
    );
  }
  await visitor.openMessage(`Åsa's "keys" & 🔑`);
  assert.ok((await page.innerText('.background')).includes(kContent));
  assert.equal((await visitor.newMessages()) - newBefore.grace, 0);

  await visitor.openMessage(`Åsa's "keys" & 🔑`);
  await visitor.press('Reply');
  assert.deepEqual(await visitor.filledIn(), {
    Vastaanottaja: ['Åsa Lindqvist'],
    Otsikko: `Re: ${kSubject}`,
    Sisalto:
      'On 3/15/2004 you wrote:\n' +
      "> Who's got them?\n" +
      '> \n' +
      '> I left them on the desk of\n' +
      '> Zoë, beside the very old\n' +
      '> <coffee> machine.',
  });
  await visitor.press('Send Message');
  await visitor.logIn('asa');
  const { sender, subject, isNew } = (await visitor.messages()).at(-1);
  assert.deepEqual([sender, subject, isNew], ['Grace Okafor', `Re: Åsa's "keys" & 🔑`, true]);
});

visit('what a message lacks is said at once, and the rest stays', { user: 'asa' }, async (visitor) => {
  for (const [typed, alert] of [
    [{ Vastaanottaja: [], Otsikko: '', Sisalto: '' }, 'No recipient.\nNo subject.\nNo message.\n'],
    [{ Vastaanottaja: ['Daniel Kim', '[Sales]'], Otsikko: kSubject, Sisalto: '' }, 'No message.\n'],
    [{ Vastaanottaja: [], Otsikko: '', Sisalto: kContent }, 'No recipient.\nNo subject.\n'],
  ]) {
    await write(visitor, typed);
    assert.deepEqual(visitor.takeAlerts(), [alert]);
    assert.deepEqual(await visitor.filledIn(), typed);
  }
});

visit('ticked messages are deleted together, an open one by itself', { user: 'jurgen' }, async (visitor) => {
  const before = await visitor.messages();
  await visitor.press('Delete Selected Messages');
  assert.equal((await visitor.messages()).length, before.length);

  const boxes = visitor.page.locator('[name=msg]');
  await boxes.nth(1).check();
  await boxes.nth(2).check();
  await visitor.press('Delete Selected Messages');
  const left = before.filter((_, index) => index !== 1 && index !== 2);
  assert.deepEqual(await visitor.messages(), left);

  await visitor.openMessage(left.at(-1).subject);
  await visitor.press('Delete');
  assert.equal(await visitor.caption(), 'MESSAGES');
  assert.deepEqual(await visitor.messages(), left.slice(0, -1));
});
