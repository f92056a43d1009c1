// Makes the pictures of the documentation: node screenshots.mjs FOLDER

import { mkdir, stat } from 'node:fs/promises';
import { join } from 'node:path';

import { launchBrowser } from './browser.mjs';
import { startDemoServer } from './demo_server.mjs';
import { Visitor } from './visitor.mjs';

const kMostBytes = 200 * 1024;
// A little smaller than on a screen, so that a whole month fits: the pictures have 1280 x 900 pixels.
const kWindow = { viewport: { width: 1600, height: 1125 }, deviceScaleFactor: 0.8 };

const kPictures = [{ file: 'month.png', user: 'asa', query: '?p=c&dm=month' }];

async function takePicture(browser, address, folder, { file, user, query }) {
  const context = await browser.newContext(kWindow);
  const visitor = new Visitor(await context.newPage(), address);
  await visitor.logIn(user);
  await visitor.open(query);
  const path = join(folder, file);
  await visitor.page.screenshot({ path });
  await context.close();
  if (visitor.faults.length) throw new Error(`${file}: ${visitor.faults.join('; ')}`);
  const { size } = await stat(path);
  if (size > kMostBytes) throw new Error(`${path} has ${size} bytes, more than ${kMostBytes}`);
  console.log(`made ${path}, ${size} bytes`);
}

const folder = process.argv[2];
await mkdir(folder, { recursive: true });
const server = await startDemoServer();
const browser = await launchBrowser();
try {
  for (const picture of kPictures) await takePicture(browser, server.address, folder, picture);
} finally {
  await browser.close();
  await server.stop();
}
