import { rename } from 'node:fs/promises';
import { join } from 'node:path';

import { run } from './processes.mjs';

/**
 * A database for one cluster: `path` as pages name it, and `goAway()`, `comeBack()` and `drop()`. It is one of the
 * PostgreSQL server that the environment names, or a file in `folder`.
 */
export async function makeDatabase(folder) {
  const server = process.env.ORLUNE_TEST_POSTGRESQL;
  return server ? makePostgresql(server) : makeFile(join(folder, 'calendar.db'));
}

function makeFile(path) {
  const away = `${path}.away`;
  return {
    path,
    goAway: () => rename(path, away),
    comeBack: () => rename(away, path),
    drop: async () => {},
  };
}

async function makePostgresql(server) {
  const name = `cluster_${process.pid}`;
  const psql = (sql) => run('psql', ['--no-psqlrc', '--quiet', '--command', sql, server]);
  const control = (how) => run('sh', ['-c', `exec $0 $1`, process.env.ORLUNE_TEST_POSTGRESQL_CTL, how]);
  await psql(`CREATE DATABASE ${name}`);
  const url = new URL(server);
  url.pathname = name;
  return {
    path: url.href,
    goAway: () => control('stop --mode=immediate'),
    comeBack: () => control('start'),
    drop: () => psql(`DROP DATABASE ${name} WITH (FORCE)`),
  };
}
