import assert from 'node:assert/strict';
import { cp, mkdir, mkdtemp, rm, symlink } from 'node:fs/promises';
import { after, before, test } from 'node:test';
import { tmpdir } from 'node:os';
import { join } from 'node:path';

import { run } from '../processes/program.mjs';
import { kOrlune, kRepository, Server } from '../processes/server.mjs';
import { launchBrowser } from './browsers.mjs';
import { Visitor } from './visitor.mjs';

export const kDesktop = { width: 1280, height: 900 };
export const kPhone = { width: 390, height: 844, isMobile: true, hasTouch: true };

/** The time at which the demo company is created, and of the server's stopped clock: a Monday. */
const kNow = '2004-03-15T10:30:00';

/**
 * Creates the demo company in a temporary folder and serves it with the repository's configuration. Resolves to the
 * `address` of the page; `stop()` stops the server and removes the folder.
 */
export async function startDemo() {
  const folder = await mkdtemp(join(tmpdir(), 'orlune-browser-'));
  const configuration = join(folder, 'orlune.toml');
  await cp(join(kRepository, 'orlune.toml'), configuration);
  await symlink(join(kRepository, 'site'), join(folder, 'site'));
  await mkdir(join(folder, 'var'));
  // The demo's dates are relative to the current day, so faketime sets it. Its preloaded library precedes that of the
  // sanitizers, which is an error by default.
  const init = ['-f', `@${kNow.replace('T', ' ')}`, kOrlune, 'init', join(folder, 'var/calendar.db'), '--demo'];
  await run('faketime', init, { env: { ...process.env, ASAN_OPTIONS: 'verify_asan_link_order=0' } });
  const server = new Server(configuration, '--now', kNow);
  await server.start();

  const stop = async () => {
    const code = await server.end('SIGTERM');
    await rm(folder, { recursive: true });
    if (code !== 0) throw new Error(`The server ended with ${code}:\n${server.log}`);
  };
  return { address: server.page, stop };
}

/**
 * Provides a browser and a server for a test file. Returns a function that declares a test: `steps` gets a Visitor in a
 * new window, logged in as `user` if given. The test also fails for any error recorded in the window.
 */
export function calendarSuite() {
  let demo;
  let browser;
  before(async () => {
    demo = await startDemo();
    browser = await launchBrowser();
  });
  after(async () => {
    await browser?.close();
    await demo?.stop();
  });

  return (name, { user, window = kDesktop, skip = false }, steps) =>
    test(name, { skip }, async () => {
      const context = await browser.createBrowserContext();
      try {
        const page = await context.newPage();
        await page.setViewport(window);
        const visitor = new Visitor(page, demo.address);
        if (user) await visitor.logIn(user);
        await steps(visitor);
        assert.deepEqual(visitor.faults, []);
      } finally {
        await context.close();
      }
    });
}
