import assert from 'node:assert/strict';

import { Manager } from './administration.mjs';
import { calendarSuite } from './calendar_suite.mjs';

const visit = calendarSuite();

const kNoName = 'Name field is empty.\n';
const kQuotes = 'Name field must not contain quotes.\n';
const kNoFile = 'Filename field is empty.\n';
const kNoLogin = 'Login Name field is empty.\n';
const kDigits = 'Login Name field must contain letters of the alphabet.\n';
const kSigns = 'Login Name field may only contain alphanumeric characters.\n';
const kNoPassword = 'Password field is empty.\n';
const kSpaces = 'Password field must not contain spaces.\n';
const isTaken = (name) => `Login Name ${name} is already in use.\n`;

const kRefusedUsers = [
  { name: '', intname: '', password: '', alert: kNoName + kNoLogin + kNoPassword },
  { name: '"', intname: '2004', password: 'a b', alert: kQuotes + kDigits + kSpaces },
  { name: 'Olivia', intname: 'olivia-2', password: 'x', alert: kSigns },
  { name: 'Olivia', intname: 'Åsa', password: 'x', alert: kSigns },
  { name: 'Olivia', intname: 'ASA', password: '', alert: isTaken('ASA') + kNoPassword },
  { name: 'Olivia', intname: 'sales', password: 'x', alert: isTaken('sales') },
];
const kOlivia = {
  name: "Olivia O'Hara",
  intname: 'olivia',
  password: `'"<&>`,
  memberships: ['Office Life (office)', 'Sports Club (sport)'],
  adminships: ['Sports Club (sport)'],
  hide: 'Hidden',
};

visit('a new user is checked, logs in and is what the form says', { user: 'admin' }, async (visitor) => {
  const users = new Manager(visitor, 'um');
  await visitor.pressButton('Administration');
  for (const { alert, ...fields } of kRefusedUsers) {
    await visitor.fillIn({ ...kOlivia, ...fields });
    await visitor.press('Save');
    assert.deepEqual(visitor.takeAlerts(), [alert]);
    assert.deepEqual(await visitor.filledIn(), { id: '', ...kOlivia, ...fields });
  }
  await visitor.fillIn(kOlivia);
  await visitor.press('Save');
  const label = "Olivia O'Hara (olivia)";
  assert.equal((await users.labels()).filter((listed) => listed === label).length, 1);
  await users.open(label);
  assert.deepEqual(await visitor.filledIn(), { id: label, ...kOlivia });

  await visitor.logIn('olivia', kOlivia.password);
  assert.equal(await visitor.calendarTitle(), kOlivia.name);
  await visitor.open('?p=e');
  const calendars = await visitor.page.locator('[name=calendar] option').allInnerTexts();
  assert.deepEqual(calendars, [kOlivia.name, 'Sports Club']);
  await visitor.logIn('asa');
  assert.ok(!(await visitor.page.locator('[name=cn] option').allInnerTexts()).includes(kOlivia.name));
});

/** What somebody finds after the login: calendar, messages, own group views, colleagues in a group view. */
async function belongingsOf(visitor, user) {
  await visitor.logIn(user);
  const title = await visitor.calendarTitle();
  await visitor.choose({ view: 'Month' });
  const entries = await visitor.entries();
  const messages = await visitor.messages();
  await visitor.open('?p=p&act=groups');
  const views = await visitor.page.locator('[name=id] option').allInnerTexts();
  return { title, entries, messages, views };
}

async function salesFloor(visitor) {
  await visitor.logIn('asa');
  await visitor.choose({ calendar: '-Sales Floor-', view: 'Month' });
  return visitor.entries();
}

/** How often each table names a user, by login name. */
const kMentions = (user) => `
  SELECT (SELECT count(*) FROM Events WHERE Owner = '${user}') AS events,
         (SELECT count(*) FROM Messages WHERE Sender = '${user}') AS sent,
         (SELECT count(*) FROM Messages WHERE Recipient = '${user}') AS received,
         (SELECT count(*) FROM GroupViews WHERE Owner = '${user}') AS views,
         (SELECT count(*) FROM GroupViews
           WHERE ', ' || Calendars || ', ' LIKE '%, ${user}, %') AS places,
         (SELECT count(*) FROM Calendars WHERE Name = '${user}') AS accounts`;
const kNone = { events: 0, sent: 0, received: 0, views: 0, places: 0, accounts: 0 };

visit('a renamed user keeps everything, and so do the others', {}, async (visitor, server) => {
  const users = new Manager(visitor, 'um');
  await visitor.logIn('zoe');
  await visitor.open('?p=p&act=groups');
  await visitor.fillIn({ name: 'Friends', cals: ['Zoë Fairweather', 'Noor Haddad'] });
  await visitor.press('Save');

  const before = await belongingsOf(visitor, 'zoe');
  const floor = await salesFloor(visitor);
  const received = await visitor.messages();
  assert.ok(received.some(({ sender }) => sender === 'Zoë Fairweather'));
  const [mentions] = await server.rows(kMentions('zoe'));
  assert.ok(Object.values(mentions).every((count) => count > 0), JSON.stringify(mentions));

  await visitor.logIn('admin');
  await users.save({ intname: 'zoefair' }, 'Zoë Fairweather (zoe)');
  assert.deepEqual(await server.rows(kMentions('zoe')), [kNone]);
  assert.deepEqual(await server.rows(kMentions('zoefair')), [mentions]);

  assert.deepEqual(await belongingsOf(visitor, 'zoefair'), before);
  assert.deepEqual(await salesFloor(visitor), floor);
  assert.deepEqual(await visitor.messages(), received);
  await visitor.logIn('zoe');
  assert.deepEqual(visitor.takeAlerts(), ['Incorrect username.\n']);
});

visit('a removed user leaves nothing in the calendars of the others', {}, async (visitor, server) => {
  const users = new Manager(visitor, 'um');
  const floor = await salesFloor(visitor);
  const sentByTomas = "SELECT count(*) AS letters FROM Messages WHERE Sender = 'tomas'";
  const [before] = await server.rows(sentByTomas);
  const isTomas = ({ background }) => background === 'rgb(0, 255, 255)';
  assert.ok(floor.some(isTomas));

  await visitor.logIn('admin');
  await users.remove('Tomás Herrera (tomas)');
  assert.ok(!(await users.labels()).some((label) => label.includes('tomas')));
  assert.deepEqual(await server.rows(kMentions('tomas')), [{ ...kNone, sent: before.letters }]);
  assert.deepEqual(await salesFloor(visitor), floor.filter((entry) => !isTomas(entry)));
  await visitor.logIn('tomas');
  assert.deepEqual(visitor.takeAlerts(), ['Incorrect username.\n']);
});

const kClub = 'Book Club';

async function seesClub(visitor, user) {
  await visitor.logIn(user);
  await visitor.choose({ view: 'Month' });
  const found = (await visitor.entries()).filter(({ text }) => text === 'Middlemarch');
  return found.map(({ isEditable }) => (isEditable ? 'and may edit it' : 'and may read it'));
}

visit('a group lives as long as the administrator wants it', { user: 'admin' }, async (visitor, server) => {
  const groups = new Manager(visitor, 'gm');
  const members = (names) => names.map(([name, login]) => `${name} (${login})`);
  const ines = ['Inês Duarte', 'ines'];
  const niamh = ["Niamh O'Brien", 'niamh'];
  const mikko = ['Mikko Järvinen', 'mikko'];
  await groups.save({ name: 'the "club"' });
  assert.deepEqual(visitor.takeAlerts(), [kQuotes]);
  await groups.save({
    name: kClub,
    memberships: members([ines, niamh]),
    adminships: members([mikko]),
    hide: 'Visible',
  });
  await groups.open('Book Club (bookclub)');
  const { memberships, adminships, hide } = await visitor.filledIn();
  assert.deepEqual(
    { memberships, adminships, hide },
    { memberships: members([ines, niamh]), adminships: members([mikko]), hide: 'Visible' },
  );

  await visitor.logIn('mikko');
  await visitor.createEvent({ title: 'Middlemarch', date1: '3/18/2004', calendar: kClub });
  assert.deepEqual(await seesClub(visitor, 'mikko'), []); // he administers it and is no member
  await visitor.choose({ calendar: `[${kClub}]` });
  assert.deepEqual(await visitor.daysOf('Middlemarch'), [18]);
  assert.deepEqual(await seesClub(visitor, 'ines'), ['and may read it']);
  assert.deepEqual(await seesClub(visitor, 'niamh'), ['and may read it']);
  assert.deepEqual(await seesClub(visitor, 'noor'), []);

  await visitor.logIn('admin');
  await groups.save({ memberships: members([ines]), adminships: members([ines]) }, 'Book Club (bookclub)');
  assert.deepEqual(await seesClub(visitor, 'niamh'), []);
  assert.deepEqual(await seesClub(visitor, 'ines'), ['and may edit it']);

  await visitor.logIn('admin');
  await groups.remove('Book Club (bookclub)');
  assert.deepEqual(await seesClub(visitor, 'ines'), []);
  const traces = await server.rows(`
    SELECT Name FROM Calendars
     WHERE Name = 'bookclub' OR MemberOfGroups LIKE '%bookclub%' OR AdminOfGroups LIKE '%bookclub%'
    UNION ALL SELECT EventName FROM Events WHERE Owner = 'bookclub'`);
  assert.deepEqual(traces, []);
  const lists = "SELECT MemberOfGroups, AdminOfGroups FROM Calendars WHERE Name = 'ines'";
  assert.deepEqual(await server.rows(lists), [
    { MemberOfGroups: 'engineering, office', AdminOfGroups: null },
  ]);
});

visit('an event type comes with its picture and goes', { user: 'admin' }, async (visitor) => {
  const types = new Manager(visitor, 'tm');
  const pictures = () =>
    visitor.page.locator('td > .daynumber ~ img:has(+ a:text("Chess"))').evaluateAll(([image]) => [
      image.src.split('/').pop(),
      image.naturalWidth > 0,
    ]);
  for (const [fields, alert] of [
    [{ name: 'Games', intname: '' }, kNoFile],
    [{ name: '', intname: 'type_party.gif' }, kNoName],
    [{ name: '"', intname: '' }, kQuotes + kNoFile],
  ]) {
    await types.save(fields);
    assert.deepEqual(visitor.takeAlerts(), [alert]);
    assert.deepEqual(await visitor.filledIn(), { id: '', ...fields });
  }
  await types.save({ name: "Kids' games", intname: 'type_sport.gif' });
  await visitor.createEvent({ title: 'Chess', date1: '3/17/2004', type: "Kids' games" });
  assert.deepEqual(await pictures(), ['type_sport.gif', true]);
  await types.save({ intname: 'type_party.gif' }, "Kids' games (type_sport.gif)");
  await visitor.open('?p=c');
  assert.deepEqual(await pictures(), ['type_party.gif', true]);
  await types.remove("Kids' games (type_party.gif)");
  await visitor.open('?p=c');
  assert.deepEqual(await pictures(), ['cal_redind.gif', true]);
});

visit('a colour scheme can be worn until it is removed', { user: 'admin' }, async (visitor) => {
  const schemes = new Manager(visitor, 'cm');
  const ground = () => visitor.page.evaluate(() => getComputedStyle(document.body).backgroundColor);
  await schemes.save({ name: 'Night shift', intname: '' });
  assert.deepEqual(visitor.takeAlerts(), [kNoFile]);
  await schemes.save({ name: 'Night shift', intname: 'dark.css' });
  assert.deepEqual(await schemes.labels(), [
    'Dark (dark.css)',
    'Default (default.css)',
    'High Contrast (contrast.css)',
    'Night shift (dark.css)',
    'Nineties (nineties.css)',
  ]);
  await visitor.logIn('mikko');
  const usual = await ground();
  await visitor.open('?p=p');
  await visitor.fillIn({ css: 'Night shift' });
  await visitor.press('Save Changes');
  assert.equal(await ground(), 'rgb(17, 21, 26)');

  await visitor.logIn('admin');
  await schemes.remove('Night shift (dark.css)');
  await visitor.logIn('mikko');
  assert.equal(await ground(), usual);
});

const kProtected = [
  { prefix: 'um', record: 'Administrator (admin)', ordinary: 'Daniel Kim (daniel)' },
  { prefix: 'gm', record: 'Everybody (default)', ordinary: 'Board (board)' },
  { prefix: 'cm', record: 'Default (default.css)', ordinary: 'Dark (dark.css)' },
];

visit('what the calendar needs cannot be removed', { user: 'admin' }, async (visitor) => {
  const deletes = visitor.page.getByRole('button', { name: 'Delete' });
  for (const { prefix, record, ordinary } of kProtected) {
    const manager = new Manager(visitor, prefix);
    for (const [label, buttons] of [
      [undefined, 0],
      [record, 0],
      [ordinary, 1],
    ]) {
      await manager.open(label);
      assert.equal(await deletes.count(), buttons, label);
    }
    await manager.open(record);
    assert.equal(await visitor.page.locator('[name=intname]:not([type=hidden]), [multiple]').count(), 0);
  }
  await visitor.press('Save');
  assert.deepEqual(visitor.takeAlerts(), [kNoFile]);
});

visit('nobody else gets in, not even by address', { user: 'grace' }, async (visitor, server) => {
  const { page } = visitor;
  const users = 'SELECT Name FROM Calendars';
  const before = await server.rows(users);
  assert.equal(await page.getByAltText('Administration').count(), 0);
  for (const act of ['', '&act=um_list', '&act=gm_list', '&act=cm_list', '&act=tm_list']) {
    await visitor.open(`?p=a${act}`);
    assert.equal(await page.innerHTML('body'), "You don't have rights for this.", act);
  }
  for (const [act, body] of [
    ['um_delete', 'id=14'],
    ['um_save', 'name=Eve&intname=eve&password=eve&hide=no'],
  ]) {
    const answer = await page.evaluate(
      async (address) => {
        const headers = { 'Content-Type': 'application/x-www-form-urlencoded' };
        return (await fetch(address[0], { method: 'POST', headers, body: address[1] })).text();
      },
      [`?p=a&act=${act}`, body],
    );
    assert.equal(answer, "You don't have rights for this.", act);
  }
  assert.deepEqual(await server.rows(users), before);
});
