import { readFile } from 'node:fs/promises';

/**
 * The code block in `language` of docs/scaling.md, so that what the manual shows is what is tested. Each key of
 * `replacements` has to stand in it, and gives way to its value.
 */
export async function codeBlock(language, replacements) {
  const manual = await readFile(new URL('../../docs/scaling.md', import.meta.url), 'utf8');
  const blocks = [...manual.matchAll(/^```(\w+)\n(.*?)^```$/gms)].filter((block) => block[1] === language);
  if (blocks.length !== 1) throw new Error(`docs/scaling.md has ${blocks.length} blocks in ${language}`);
  let text = blocks[0][2];
  for (const [from, to] of Object.entries(replacements)) {
    if (!text.includes(from)) throw new Error(`docs/scaling.md does not have ${from}`);
    text = text.replaceAll(from, to);
  }
  return text;
}
