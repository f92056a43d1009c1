import { execFile, spawn } from 'node:child_process';
import { appendFile, cp, mkdir, mkdtemp, rm, symlink } from 'node:fs/promises';
import { once } from 'node:events';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { createInterface } from 'node:readline';
import { fileURLToPath } from 'node:url';
import { promisify } from 'node:util';

const run = promisify(execFile);
const repository = fileURLToPath(new URL('../..', import.meta.url));
const orlune = process.env.ORLUNE ?? join(repository, 'build/release/orlune');

/** The moment at which the demo company was made and at which the server's clock stands: a Monday. */
export const kNow = '2004-03-15T10:30:00';

const kDatabase = 'var/calendar.db';

/**
 * Makes the demo company as of `now` in a folder of its own and serves it with the configuration that the
 * repository ships and the `settings` of its page besides. Resolves to the `address` of the page once it
 * answers; `rows(sql)` reads the database, `stop()` ends the server and removes the folder.
 */
export async function startDemoServer({ now = kNow, settings = {} } = {}) {
  const folder = await layOutFolder(now, settings);
  const server = spawn(
    orlune,
    ['serve', '--config', join(folder, 'orlune.toml'), '--listen', '127.0.0.1:0', '--now', now],
    { stdio: ['ignore', 'pipe', 'pipe'] },
  );
  const ended = once(server, 'exit');
  process.once('exit', () => server.kill());
  let log = '';
  server.stderr.on('data', (text) => (log += text));

  const stop = async () => {
    server.kill('SIGTERM');
    const [code] = await ended;
    await rm(folder, { recursive: true });
    if (code !== 0) throw new Error(`The server ended with ${code}:\n${log}`);
  };

  const rows = (sql) => readRows(join(folder, kDatabase), sql);
  for await (const line of createInterface({ input: server.stdout })) {
    const address = /^listening on (\S+)$/.exec(line)?.[1];
    if (address) return { address, rows, stop };
  }
  await stop();
  throw new Error(`The server did not say where it listens:\n${log}`);
}

async function readRows(database, sql) {
  const { stdout } = await run('sqlite3', ['-readonly', '-json', database, sql]);
  return stdout ? JSON.parse(stdout) : [];
}

async function layOutFolder(now, settings) {
  const folder = await mkdtemp(join(tmpdir(), 'orlune-browser-'));
  const configuration = join(folder, 'orlune.toml');
  await cp(join(repository, 'orlune.toml'), configuration);
  // What comes last in the file belongs to its page.
  for (const [name, value] of Object.entries(settings))
    await appendFile(configuration, `${name} = ${JSON.stringify(value)}\n`);
  await symlink(join(repository, 'site'), join(folder, 'site'));
  await mkdir(join(folder, 'var'));
  // The demo is made around the day it is made on, so that day has to be pretended.
  await run('faketime', [
    '-f',
    `@${now.replace('T', ' ')}`,
    orlune,
    'init',
    join(folder, kDatabase),
    '--demo',
  ]);
  return folder;
}
