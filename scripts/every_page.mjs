// Takes every page in all schemes and sizes, for people to look at: node every_page.mjs FOLDER [PART OF A PAGE'S NAME]
// BROWSER=firefox takes them in Firefox, without forced colours. FOLDER/index.html shows them all.

import { mkdir, writeFile } from 'node:fs/promises';
import { join } from 'node:path';

import { forceColours, kEmulatesMedia, launchBrowser } from '../tests/browser/browsers.mjs';
import { kPages, kSchemes, reach, wear } from '../tests/browser/pages.mjs';
import { kDesktop, kPhone, startDemo } from '../tests/browser/suite.mjs';
import { Visitor } from '../tests/browser/visitor.mjs';

const kWindows = [{ ...kPhone, width: 320 }, kPhone, { ...kPhone, width: 820 }, kDesktop];

/** Takes the page that is shown in one window, in every scheme, and on paper. Resolves to the names of the files. */
async function takeSchemes(page, folder, name) {
  const files = [];
  const take = async (file) => {
    await page.screenshot({ path: join(folder, file), fullPage: true });
    files.push(file);
  };
  for (const [sheet, system] of kSchemes) {
    const file = `${name}-${sheet.replace('.css', '')}-${system}`;
    await wear(page, sheet, system);
    await take(`${file}.png`);
    if (!page.viewport().isMobile) await page.pdf({ path: join(folder, `${file}.pdf`), format: 'a4' });
  }
  if (kEmulatesMedia) {
    await forceColours(page, true);
    await take(`${name}-forced.png`);
    await forceColours(page, false);
  }
  return files;
}

const [folder, wanted = ''] = process.argv.slice(2);
await mkdir(folder, { recursive: true });
const demo = await startDemo();
const browser = await launchBrowser();
const files = [];
try {
  for (const [user, pages] of Object.entries({ ...kPages, '': { 'the login': ['?p=l'] } }))
    for (const window of kWindows) {
      const context = await browser.createBrowserContext();
      const page = await context.newPage();
      await page.setViewport(window);
      const visitor = new Visitor(page, demo.address);
      if (user) await visitor.logIn(user);
      for (const [what, steps] of Object.entries(pages).filter(([name]) => name.includes(wanted))) {
        await reach(visitor, steps);
        files.push(...(await takeSchemes(page, folder, `${what.replaceAll(' ', '_')}-${window.width}`)));
      }
      await context.close();
    }
} finally {
  await browser.close();
  await demo.stop();
}
const figure = (file) => `<figure><figcaption>${file}</figcaption><img src="${file}"></figure>`;
await writeFile(join(folder, 'index.html'), files.sort().map(figure).join('\n'));
console.log(`made ${files.length} pictures and ${join(folder, 'index.html')}`);
