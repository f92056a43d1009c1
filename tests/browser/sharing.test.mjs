import assert from 'node:assert/strict';
import { mkdtemp, rm, writeFile } from 'node:fs/promises';
import { tmpdir } from 'node:os';
import { join } from 'node:path';

import { calendarSuite } from './suite.mjs';

const visit = calendarSuite();

const kEvents = [
  ['UID:move@elsewhere', 'DTSTART;VALUE=DATE:20040311', 'RRULE:FREQ=WEEKLY;COUNT=2', 'SUMMARY:Move </textarea>&amp\\;'],
  ['UID:kept@elsewhere', 'DTSTART;VALUE=DATE:20040312', 'SUMMARY:Räksmörgås', 'LOCATION:Kitchen'],
];
// Lone line feeds, as some programs write them.
const kFile = ['BEGIN:VCALENDAR', 'VERSION:2.0', 'PRODID:-//Elsewhere//EN']
  .concat(kEvents.flatMap((lines) => ['BEGIN:VEVENT', 'DTSTAMP:20040301T000000Z', ...lines, 'END:VEVENT']))
  .concat('END:VCALENDAR', '')
  .join('\n');

visit('a device gets a password once, and loses it', { user: 'asa' }, async (visitor) => {
  await visitor.open('?p=p');
  await visitor.followLink('Devices And Sharing');
  assert.equal(await visitor.page.$eval('html', ({ lang }) => lang), 'en');
  await visitor.fillIn({ device: 'Phone' });
  const pressTwice = (button) => [1, 2].forEach(() => button.click());
  await visitor.follow(() => visitor.page.$eval('[value="Make App Password"]', pressTwice));
  assert.match(await visitor.textOf('.made'), /^App password of “Phone”.*\/dav\/.*asa.*[a-z0-9]{26}$/s);

  await visitor.open('/sharing');
  assert.equal(await visitor.page.$('.made'), null);
  await visitor.follow(() => visitor.page.click('[aria-label="Revoke Phone"]'));
  assert.equal(await visitor.page.$('.list'), null);
});

visit('a file is imported as its preview shows, and exported', { user: 'asa' }, async (visitor) => {
  const folder = await mkdtemp(join(tmpdir(), 'orlune-file-'));
  const file = join(folder, 'moved.ics');
  await writeFile(file, kFile);
  const preview = async () => {
    await visitor.open('/sharing');
    await (await visitor.page.$('[name=file]')).uploadFile(file);
    await visitor.press('Preview');
    return visitor.textOf('.sharing');
  };
  try {
    assert.match(await preview(), /2 new, 0 changed, 0 unchanged, 0 refused.*Move.*By Weekday.*location/s);
    await visitor.press('Import');
    assert.match(await visitor.textOf('.made'), /2 new, 0 changed, 0 unchanged/);
    assert.match(await preview(), /0 new, 0 changed, 2 unchanged/);
  } finally {
    await rm(folder, { recursive: true });
  }
  await visitor.open('?p=c&dm=month&cd=3/15/2004');
  assert.deepEqual(await visitor.daysOf('</textarea>&'), [11, 18]);
  assert.deepEqual(await visitor.daysOf('Räksmörgås'), [12]);
  const exported = await visitor.page.evaluate(async () =>
    Promise.all(['', '&date2=3/11/2004'].map(async (period) => {
      const answer = await fetch(`${location.pathname}/sharing?act=export&calendar=asa${period}`);
      return answer.text();
    })),
  );
  assert.deepEqual(exported.map((text) => text.includes('SUMMARY:Räksmörgås\r\n')), [true, false]);
  assert.deepEqual(exported.map((text) => text.includes('SUMMARY:Move </textarea>&amp\\;\r\n')), [true, true]);
});
