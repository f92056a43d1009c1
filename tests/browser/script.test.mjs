import assert from 'node:assert/strict';

import { calendarSuite } from './suite.mjs';

const visit = calendarSuite();

/** What the script tells after its texts have come. */
async function statusOf(page) {
  await page.waitForSelector('.orlune-status:not(:empty)');
  return page.$eval('.orlune-status', ({ firstChild }) => firstChild.data);
}

const endSession = async ({ page }) => page.deleteCookie(...(await page.cookies()));

const names = (page) =>
  page.$$eval('input:not([type=hidden], [type=button], [type=submit]), select, textarea', (fields) =>
    fields.filter(({ labels }) => !labels.length).map((field) => field.ariaLabel),
  );

visit('every page says what it shows, and every field what is wanted', { user: 'zoe' }, async (visitor) => {
  const { page } = visitor;
  const cases = {
    '?p=c&dm=month': ['March 2004 - Zoë Fairweather', ['Date', 'Calendar', 'View']],
    '?p=c&dm=day': ['Monday, March 15, 2004 - Zoë Fairweather', ['Date', 'Calendar', 'View']],
    '?p=e': ['Event Details', ['Start time', 'End time']],
    '?p=m&act=new': ['New Message', ['Subject', 'Recipient(s)', 'Message']],
    '?p=p&act=login': ['Change Password', ['Old Password', 'New Password', 'New Password (again)']],
    '?p=p&act=groups': ['Group Views', ['Saved Group Views', 'Name', 'Calendars']],
  };
  for (const [query, [title, fields]] of Object.entries(cases)) {
    await visitor.open(query);
    await page.waitForSelector('.orlune-skip');
    assert.equal(await page.title(), `${title} - Orlune v1.0.0`);
    assert.deepEqual(await names(page), fields, query);
    assert.equal(await page.$eval(':root', ({ lang }) => lang), 'en');
  }
  await visitor.open('?p=e');
  await page.waitForSelector('::-p-text(To invite others, press “Send” instead of “Save”.)');
  await visitor.open('?p=m');
  await page.waitForSelector('[aria-label="Select “Thank you”"]');
  const states = await page.$$eval('.background img', (all) => all.map(({ alt }) => alt));
  assert.deepEqual(new Set(states), new Set(['Read', 'New']));
});

visit('a click on a free day or hour begins an event there, and Enter saves it', { user: 'asa' }, async (visitor) => {
  const { page } = visitor;
  const day = '::-p-xpath(//td[font/a[text()="21"]])';
  await visitor.open('?p=c&dm=month');
  assert.equal(await page.$eval(day, ({ dataset }) => dataset.weekday), 'Sun');
  await visitor.follow(() => page.click(day, { offset: { x: 80, y: 10 } }));
  assert.equal(await page.evaluate(() => document.activeElement.name), 'title');
  await page.keyboard.type('Picnic');
  await visitor.follow(() => page.keyboard.press('Enter'));
  assert.equal(await statusOf(page), 'Saved');
  assert.deepEqual(await visitor.daysOf('Picnic'), [21]);
  await page.reload();
  assert.equal(await page.$('.orlune-status'), null);

  await visitor.open('?p=c&dm=day&cd=3/21/2004');
  await visitor.follow(() => page.click('::-p-xpath(//td[text()="11:00"]/following-sibling::td)'));
  const { date1, time1, time2 } = await visitor.filledIn();
  assert.deepEqual([date1, time1, time2], ['3/21/2004', '11:00', '12:00']);
  await visitor.press('Save');
  assert.equal(visitor.takeAlerts().length, 1);
  assert.equal(await page.$('.orlune-status'), null);
});

visit('a button pressed twice saves once, and the end time follows the start', { user: 'asa' }, async (visitor) => {
  const { page } = visitor;
  await visitor.open('?p=e');
  await visitor.fillIn({ title: 'Twice', time1: '09:00' });
  assert.equal((await visitor.filledIn()).time2, '10:00');
  await visitor.fillIn({ time2: '11:30' });
  await visitor.fillIn({ time1: '13:15' });
  const popup = await visitor.popupOf('[name=pick1]');
  for (const key of ['ArrowDown', 'ArrowRight']) await popup.keyboard.press(key);
  await popup.keyboard.press('Enter').catch(() => {}); // closes the window
  await page.waitForFunction(() => document.acForm.date1.value === '3/23/2004');
  assert.equal((await visitor.filledIn()).time2, '15:45');
  await visitor.follow(() =>
    page.$eval('[value=Save]', (button) => {
      const channel = new MessageChannel(); // the second time as an event of its own, before the answer
      channel.port1.onmessage = () => button.click();
      button.click();
      channel.port2.postMessage('');
    }),
  );
  assert.deepEqual(await visitor.daysOf('13:15-15:45 Twice'), [23]);
  await visitor.open('?p=c&dm=day&cd=3/23/2004');
  assert.equal((await page.$$('::-p-xpath(//b[text()="Twice"])')).length, 1);
});

visit('events outside the hours of the day view are told and found', { user: 'asa' }, async (visitor) => {
  const { page } = visitor;
  for (const time1 of ['03:00', '22:30', '23:00']) {
    await visitor.open('?p=e');
    await visitor.fillIn({ title: `Watch at ${time1}`, date1: '2/29/2004', time1 });
    await visitor.press('Save');
  }
  await visitor.open('?p=c&dm=day&cd=2/29/2004');
  await page.waitForSelector('.orlune-hours a');
  assert.equal(await visitor.textOf('.orlune-hours'), '1 earlier, 2 later');
  await visitor.follow(() => page.click('.orlune-hours a'));
  await page.waitForSelector('::-p-text(Watch at 22:30)');
});

visit('"Repeat" waits for the choice of the keyboard, and has the focus again', { user: 'asa' }, async (visitor) => {
  const { page } = visitor;
  await visitor.open('?p=e');
  const chosen = () => page.evaluate(() => [document.activeElement.name, document.acForm.reptype.value]);
  const press = async (...keys) => {
    for (const key of keys) await page.keyboard.press(key);
  };
  await page.focus('[name=reptype]');
  await press('ArrowDown', 'ArrowDown', 'ArrowDown', 'Escape');
  assert.deepEqual(await chosen(), ['reptype', 'none']);
  await press('ArrowDown', 'ArrowDown');
  await visitor.follow(() => press('Enter'));
  assert.deepEqual(await chosen(), ['reptype', 'weekday']);
  await press('ArrowUp');
  await visitor.follow(() => press('Tab'));
  assert.deepEqual(await chosen(), ['reptype', 'day']);
});

visit('the date picker shows the date of the form, and needs no mouse', { user: 'asa' }, async (visitor) => {
  const { page } = visitor;
  await visitor.open('?p=e');
  await visitor.fillIn({ date1: '12/31/2004' });
  const popup = await visitor.popupOf('[name=pick1]');
  const focused = () => popup.evaluate(() => document.activeElement.ariaLabel);
  assert.equal(await focused(), '31 DECEMBER 2004');
  await popup.focus('[title="Next Month"]');
  await visitor.follow(() => popup.keyboard.press('Enter'), popup);
  assert.equal(await focused(), 'Next Month');
  const closed = new Promise((resolve) => popup.once('close', resolve));
  await popup.keyboard.press('Escape').catch(() => {}); // the window may be gone before the key is up
  await closed;
});

visit('deleting is asked about, and a no stops it', { user: 'admin' }, async (visitor) => {
  const { page } = visitor;
  const cases = [
    ['um', 'Zoë Fairweather (zoe)', 'user “Zoë Fairweather” and all events of the calendar'],
    ['gm', 'Sales (sales)', 'group “Sales” and all events of its calendar'],
    ['tm', 'Party (type_party.gif)', 'event type “Party”'],
    ['cm', 'Dark (dark.css)', 'colour scheme “Dark”'],
  ];
  const refuse = () =>
    page.evaluate(() => {
      window.confirm = (question) => {
        document.documentElement.dataset.asked = question;
        return false;
      };
    });
  const asked = () => page.$eval(':root', ({ dataset }) => dataset.asked);
  for (const [manager, id, what] of cases) {
    await visitor.open(`?p=a&act=${manager}_list`);
    await visitor.fillIn({ id });
    await page.waitForSelector('.orlune-skip');
    await refuse();
    await page.click('[value=Delete]');
    assert.equal(await asked(), `Delete the ${what}?`);
  }
  await visitor.open('?p=e');
  await visitor.fillIn({ title: 'Backup', reptype: 'Daily' });
  await visitor.fillIn({ date2: '3/19/2004' });
  await visitor.press('Save');
  await visitor.followLink('Backup');
  await page.waitForSelector('.orlune-skip');
  await visitor.fillIn({ reptype: 'No Repeat' }); // the stored event still repeats
  await visitor.press('Delete');
  assert.deepEqual(visitor.takeAlerts(), ['Delete the whole series “Backup” with all its occurrences?']);
  assert.equal(await statusOf(page), 'Deleted');
});

visit('what was typed outlives the session, for its user alone', { user: 'asa' }, async (visitor) => {
  const { page } = visitor;
  const typed = { title: 'Long thoughts', addinfo: 'two\nlines <b>', reptype: 'By Weekday' };
  const logInAgain = async (name) => {
    await visitor.fillIn({ Name: name, Passwd: 'demo1' });
    await visitor.press('Login');
    await page.waitForSelector('.orlune-skip');
  };
  const lose = async (button) => {
    await endSession(visitor);
    await visitor.press(button);
    assert.deepEqual(visitor.takeAlerts(), ['Incorrect username.\n']);
    await page.waitForSelector('.orlune-note');
  };
  await visitor.open('?p=e');
  await visitor.fillIn(typed);
  await visitor.fillIn({ repweekday: ['Friday'] });
  const before = await visitor.filledIn();
  await lose('Save');
  await logInAgain('asa');
  await visitor.follow(() => page.click('.orlune-note button'));
  assert.deepEqual(await visitor.filledIn(), before);

  await visitor.open('?p=m&act=new');
  await visitor.fillIn({ Otsikko: 'For me', Sisalto: 'secret' });
  await lose('Send Message');
  await logInAgain('zoe');
  assert.equal(await page.$('.orlune-note'), null);
  assert.ok(!(await page.evaluate(() => JSON.stringify(sessionStorage))).includes('secret'));
});

visit('addresses in a message become links, and nothing else does', { user: 'asa' }, async (visitor) => {
  const { page } = visitor;
  const content =
    'See (https://a.example/x_(y)), www.b.example/?q=1&r=2. <http://c.example>! javascript:alert(1) http:// ' +
    'me@www.d.example <img src=x onerror=alert(2)> "https://e.example/"';
  await visitor.open('?p=m&act=new');
  await visitor.fillIn({ Otsikko: 'Addresses', Vastaanottaja: ['Åsa Lindqvist'], Sisalto: content });
  await visitor.press('Send Message');
  assert.equal(await statusOf(page), 'Sent');
  await visitor.followLink('Addresses');
  await page.waitForSelector('.orlune-address[title="Opens in a new tab"]');
  assert.deepEqual(await page.$$eval('.orlune-address', (links) => links.map(({ href, rel }) => `${href} ${rel}`)), [
    'https://a.example/x_(y) noopener',
    'https://www.b.example/?q=1&r=2 noopener',
    'http://c.example/ noopener',
    'https://e.example/ noopener',
  ]);
  assert.ok((await page.$eval('.background', (cell) => cell.textContent)).includes(content));
  await visitor.press('Delete');
  assert.deepEqual(visitor.takeAlerts(), ['Delete this message?']);
  assert.equal(await statusOf(page), 'Deleted');
});
