// Takes the screenshots of the documentation: node screenshots.mjs FOLDER

import { mkdir, stat } from 'node:fs/promises';
import { join } from 'node:path';

import { launchBrowser } from '../tests/browser/browsers.mjs';
import { kPhone, startDemo } from '../tests/browser/suite.mjs';
import { Visitor } from '../tests/browser/visitor.mjs';

const kMostBytes = 200 * 1024;
// Scaled down so that a whole month fits: the pictures have 1280 x 900 pixels.
const kCalendar = { width: 1600, height: 1125, deviceScaleFactor: 0.8 };
// The other pages are captured in full height.
const kForm = { width: 1000, height: 200 };

/** The screenshots: `steps` are run on the page `query` before it is captured. */
const kPictures = [
  { file: 'month.png', user: 'asa', query: '?p=c&dm=month', window: kCalendar },
  { file: 'group_view.png', user: 'asa', query: '?p=c&cn=@salesfloor&dm=week', window: kForm },
  { file: 'day.png', user: 'asa', query: '?p=c&cn=@salesfloor&cd=2004-03-16&dm=day', window: kForm },
  { file: 'event.png', user: 'jurgen', query: '?p=e', window: kForm, steps: fillWeekdayEvent },
  { file: 'suggestion.png', user: 'asa', query: '?p=m', window: kForm, steps: openSuggestion },
  { file: 'found_events.png', user: 'asa', query: '?p=e&act=find', window: kForm, steps: findRepeatingEvents },
  { file: 'messages.png', user: 'asa', query: '?p=m', window: kForm },
  { file: 'preferences.png', user: 'zoe', query: '?p=p', window: kForm },
  { file: 'group_view_colours.png', user: 'asa', query: '?p=p&act=groups', window: kForm, steps: openOwnView },
  { file: 'devices.png', user: 'asa', query: '/sharing', window: kForm, steps: nameServer },
  { file: 'users.png', user: 'admin', query: '?p=a', window: kForm, steps: chooseUser },
  { file: 'phone.png', user: 'asa', query: '?p=c&dm=month', window: kPhone },
];

async function fillWeekdayEvent(visitor) {
  await visitor.fillIn({
    title: 'Reading circle',
    addinfo: 'Chapters are in the folder of the lab.',
    reptype: 'By Weekday',
    date2: '12/17/2004',
    time1: '16:00',
    time2: '17:00',
    type: 'Training',
    repweekday: ['Tuesday', 'Thursday'],
    frequency: 'Every 2 weeks',
    calendar: 'Engineering',
  });
}

async function openSuggestion(visitor) {
  await visitor.followLink('What\'s next: "Probe 5"');
}

async function findRepeatingEvents(visitor) {
  await visitor.fillIn({ search: 'one to one' });
  await visitor.press('Find Events');
}

async function openOwnView(visitor) {
  await visitor.fillIn({ id: 'Sales Floor' });
}

/** As a server is called where people use it. */
async function nameServer(visitor) {
  await visitor.page.$eval('.secret', (server) => {
    server.textContent = 'https://calendar.example.org/OLOrlune.asp/dav/';
  });
}

async function chooseUser(visitor) {
  await visitor.fillIn({ id: 'Åsa Lindqvist (asa)' });
}

async function takePicture(browser, address, folder, { file, user, query, window, steps }) {
  const context = await browser.createBrowserContext();
  const page = await context.newPage();
  await page.setViewport(window);
  const visitor = new Visitor(page, address);
  await visitor.logIn(user);
  await visitor.open(query);
  await steps?.(visitor);
  await page.evaluate(() => scrollTo(0, 0)); // a phone's month is scrolled to today
  const path = join(folder, file);
  await page.screenshot({ path, fullPage: window === kForm });
  await context.close();
  if (visitor.faults.length) throw new Error(`${file}: ${visitor.faults.join('; ')}`);
  const { size } = await stat(path);
  if (size > kMostBytes) throw new Error(`${path} has ${size} bytes, more than ${kMostBytes}`);
  console.log(`made ${path}, ${size} bytes`);
}

const folder = process.argv[2];
await mkdir(folder, { recursive: true });
const server = await startDemo();
const browser = await launchBrowser();
try {
  for (const picture of kPictures) await takePicture(browser, server.address, folder, picture);
} finally {
  await browser.close();
  await server.stop();
}
