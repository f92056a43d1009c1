import assert from 'node:assert/strict';

import { calendarSuite } from './suite.mjs';

const visit = calendarSuite();

const kLetter = {
  Vastaanottaja: ["Niamh O'Brien", '[Office Life]'],
  Otsikko: `Åsa's "keys" & 🔑`,
  Sisalto: `Who's got them?\n\nI left them on the desk of Zoë, beside the very old <coffee> machine.`,
};
const kQuoted = [
  'On 3/15/2004 you wrote:',
  "> Who's got them?",
  '> ',
  '> I left them on the desk of',
  '> Zoë, beside the very old',
  '> <coffee> machine.',
];

visit('a message is written, read, answered and deleted', { user: 'asa' }, async (visitor) => {
  const { page } = visitor;
  await visitor.open('?p=m&act=new');
  await visitor.fillIn(kLetter);
  await visitor.press('Send Message');

  await visitor.logIn('niamh');
  await visitor.open('?p=m');
  await visitor.followLink(kLetter.Otsikko);
  assert.ok((await visitor.textOf('.background')).includes(kLetter.Sisalto));
  await visitor.press('Reply');
  assert.deepEqual(await visitor.filledIn(), {
    Vastaanottaja: ['Åsa Lindqvist'],
    Otsikko: `Re: ${kLetter.Otsikko}`,
    Sisalto: kQuoted.join('\n'),
  });
  await visitor.press('Send Message');

  await visitor.logIn('asa');
  await visitor.open('?p=m');
  const listed = () => page.$$eval('tr:has(> td > img) a', (links) => links.map(({ innerText }) => innerText));
  const before = await listed();
  for (const box of (await page.$$('[name=msg]')).slice(0, 2)) await box.click();
  await visitor.press('Delete Selected Messages');
  assert.equal(visitor.takeAlerts().length, 1);
  assert.deepEqual(await listed(), before.slice(2));
  await visitor.followLink(`Re: ${kLetter.Otsikko}`);
  await visitor.press('Delete');
  assert.equal(visitor.takeAlerts().length, 1);
  assert.deepEqual(await listed(), before.slice(2, -1));
});
