import { run } from './processes.mjs';

/**
 * A database for one cluster, of the PostgreSQL server that the environment names: `path` as pages name it, and
 * `goAway()`, `comeBack()` and `drop()`.
 */
export async function makeDatabase() {
  const server = process.env.ORLUNE_TEST_POSTGRESQL;
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
