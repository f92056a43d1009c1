import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';

import { Cluster } from './cluster.mjs';
import { Load } from './load.mjs';
import { until } from './processes.mjs';
import { isCalendar, kPage, kVisitorAddress } from './visitor.mjs';

const cluster = new Cluster();
before(() => cluster.start());
after(() => cluster.stop());

/** Goes on until the load has stored `count` events more. */
function more(load, count) {
  const enough = load.acknowledged.length + count;
  return until('events to be stored', () => load.acknowledged.length >= enough);
}

/** Every acknowledged event is stored, and none twice. */
async function assertStoredOnce(tag, acknowledged) {
  const visitor = cluster.visitor();
  await visitor.logIn('admin');
  const stored = await visitor.findTitles(tag);
  visitor.leave();
  const distinct = new Set(stored);
  assert.equal(distinct.size, stored.length, 'an event is stored twice');
  const lost = acknowledged.filter((title) => !distinct.has(title));
  assert.deepEqual(lost, [], 'acknowledged events are lost');
}

test('a login on one node holds on all of them', async () => {
  const visitor = cluster.visitor();
  const [first, second, third] = cluster.nodes;
  await visitor.logIn('asa', first);
  for (const node of [second, third, first]) assert.ok(isCalendar(await visitor.get(`${kPage}?p=c`, node)));

  await visitor.get(`${kPage}?p=c&cd=3/15/2035&dm=month`, second);
  assert.match((await visitor.get(`${kPage}?p=c`, third)).body, /MARCH 2035/i);

  await visitor.get(`${kPage}?p=l`, third);
  for (const node of cluster.nodes) assert.ok(!isCalendar(await visitor.get(`${kPage}?p=c`, node)));
});

test('the proxy shares the visitors out and tells the nodes who they are', async () => {
  const visitor = cluster.visitor();
  const login = await visitor.logIn('zoe');
  assert.match(login.headers['set-cookie'][0], /; Secure/);
  const before = cluster.nodes.map((node) => node.pageCount);
  for (let i = 0; i < 9; ++i) assert.ok(isCalendar(await visitor.get(`${kPage}?p=c`)));
  cluster.nodes.forEach((node, i) => assert.ok(node.pageCount > before[i], `node ${i} had nothing to do`));
  for (const { log } of cluster.nodes) assert.ok(log.includes(`${kVisitorAddress} GET ${kPage} 200 `));

  const style = await visitor.get('/css/default.css');
  assert.equal(style.status, 200);
  assert.match(style.headers['content-type'], /^text\/css/);
  assert.equal((await visitor.get('/css/../orlune.toml')).status, 404);
  assert.equal((await visitor.post(`${kPage}?p=e&act=save`, { title: 'x'.repeat(1 << 20) })).status, 413);
  visitor.leave();
});

test('a node is killed under load', async (t) => {
  const load = await Load.begin(cluster, 'killed');
  await more(load, 100);
  assert.ok(cluster.nodes[1].pageCount > 0);
  await cluster.nodes[1].end('SIGKILL');
  await more(load, 200);
  await cluster.nodes[1].start();
  await more(load, 100);
  await load.finish();
  t.diagnostic(summary(load));

  assert.equal(load.logouts, 0);
  assert.ok(load.failures.length <= load.writerCount, JSON.stringify(load.failures));
  await assertStoredOnce('killed', load.acknowledged);
});

test('the database is away under load', async (t) => {
  const load = await Load.begin(cluster, 'away');
  await more(load, 30);
  await cluster.database.goAway();
  await Promise.all(cluster.nodes.map((node) => node.becomes(503)));
  await until('failures', () => load.failures.length > 3 * load.writerCount);
  const stored = load.acknowledged.length;
  await cluster.database.comeBack();
  await Promise.all(cluster.nodes.map((node) => node.becomes(200)));
  await until('the load to go on', () => load.acknowledged.length > stored + 30);
  await load.finish();
  t.diagnostic(summary(load));

  assert.equal(load.logouts, 0);
  const texts = /Could not open database|Service Unavailable|away for a moment/;
  const unclear = load.failures.filter(({ status, body }) => status !== 503 || !texts.test(body));
  assert.deepEqual(unclear, [], errorsInLogs());
  await assertStoredOnce('away', load.acknowledged);
});

test('the nodes are restarted one after another under load', async (t) => {
  const load = await Load.begin(cluster, 'restarted');
  await more(load, 30);
  for (const node of cluster.nodes) {
    const ending = node.end('SIGTERM');
    await node.becomes(503);
    assert.equal(await ending, 0);
    await node.start();
    await node.becomes(200);
    await more(load, 10);
  }
  await load.finish();
  t.diagnostic(summary(load));

  assert.deepEqual(load.failures, []);
  await assertStoredOnce('restarted', load.acknowledged);
});

function errorsInLogs() {
  const lines = cluster.nodes.flatMap((node) => node.log.split('\n'));
  return [...new Set(lines.map((line) => /\[error\] (.*)/.exec(line)?.[1]))].join('\n');
}

function summary(load) {
  const kinds = new Map();
  for (const { what, status } of load.failures)
    kinds.set(`${what} ${status}`, (kinds.get(`${what} ${status}`) ?? 0) + 1);
  const failures = [...kinds].map(([kind, count]) => `${count} x ${kind}`).join(', ') || 'none';
  return `${load.acknowledged.length} events stored, ${load.pages} pages seen, failures: ${failures}`;
}
