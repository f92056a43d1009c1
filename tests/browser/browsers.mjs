import { launch } from 'puppeteer-core';

const kBrowser = process.env.BROWSER ?? 'chromium';

// No background activity.
const kSwitches = '--no-sandbox --disable-gpu --disable-background-networking --disable-component-update';

const kBrowsers = {
  chromium: { browser: 'chrome', executablePath: '/usr/bin/chromium', args: kSwitches.split(' ') },
  firefox: { browser: 'firefox', executablePath: '/usr/bin/firefox-esr' },
};

/** Firefox cannot be told which medium and which scheme of colours it shows. */
export const kEmulatesMedia = kBrowser === 'chromium';

export function launchBrowser() {
  return launch({ ...kBrowsers[kBrowser], protocol: 'webDriverBiDi' });
}

/** Lets the page show the colours of the system only, or its own again. For Chromium. */
export async function forceColours(page, isForced) {
  const session = await page.createCDPSession();
  const features = [{ name: 'forced-colors', value: isForced ? 'active' : 'none' }];
  await session.send('Emulation.setEmulatedMedia', { features });
}
