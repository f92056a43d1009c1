import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';

import { launchBrowser } from './browser.mjs';
import { startDemoServer } from './demo_server.mjs';
import { Visitor } from './visitor.mjs';

export const kDesktop = { viewport: { width: 1280, height: 900 } };
export const kPhone = { viewport: { width: 390, height: 844 }, isMobile: true, hasTouch: true };

/**
 * Gives a test file its own browser and its own server, whose page has `settings`. The result declares a test
 * of it: `steps` gets a Visitor in a fresh window, logged in as `user` when one is given, and the server. The
 * test fails when the steps do, or when anything went wrong in the window meanwhile.
 */
export function calendarSuite(settings) {
  let server;
  let browser;
  before(async () => {
    server = await startDemoServer({ settings });
    browser = await launchBrowser();
  });
  after(async () => {
    await browser?.close();
    await server?.stop();
  });

  return (name, { user, window = kDesktop }, steps) =>
    test(name, async () => {
      const context = await browser.newContext(window);
      try {
        const visitor = new Visitor(await context.newPage(), server.address);
        if (user) await visitor.logIn(user);
        await steps(visitor, server);
        assert.deepEqual(visitor.faults, []);
      } finally {
        await context.close();
      }
    });
}
