import { chromium } from 'playwright-core';

/** Debian's Chromium, without what it does by itself. */
export function launchBrowser() {
  return chromium.launch({
    executablePath: '/usr/bin/chromium',
    args: [
      '--no-sandbox',
      '--disable-gpu',
      '--disable-quic',
      '--no-first-run',
      '--disable-background-networking',
      '--disable-component-update',
      '--disable-sync',
    ],
  });
}
