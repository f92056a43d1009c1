import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';

import { until } from '../processes/program.mjs';
import { Cluster } from './cluster.mjs';
import { Load } from './load.mjs';
import { isLoginForm, kPage, kVisitorAddress } from './visitor.mjs';

const cluster = new Cluster();
before(() => cluster.start());
after(() => cluster.stop());

/** Ends the load. All acknowledged events must be stored, none twice, and no login lost. */
async function assertStoredOnce(load, tag) {
  await load.finish();
  assert.equal(load.logouts, 0);
  const visitor = cluster.visitor();
  await visitor.logIn('admin');
  const stored = await visitor.findTitles(tag);
  visitor.leave();
  const distinct = new Set(stored);
  assert.equal(distinct.size, stored.length, 'an event is stored twice');
  const lost = load.acknowledged.filter((title) => !distinct.has(title));
  assert.deepEqual(lost, [], 'acknowledged events are lost');
}

test('all nodes behind the proxy share the sessions', async () => {
  const visitor = cluster.visitor();
  const login = await visitor.logIn('zoe');
  assert.match(login.headers['set-cookie'][0], /; Secure/);
  await visitor.get(`${kPage}?p=c&cd=3/15/2035&dm=month`);
  const before = cluster.nodes.map((node) => node.pageCount);
  for (let i = 0; i < 9; ++i) assert.match((await visitor.get(`${kPage}?p=c`)).body, /MARCH 2035/i);
  cluster.nodes.forEach((node, i) => assert.ok(node.pageCount > before[i], `node ${i} had nothing to do`));
  for (const { log } of cluster.nodes) assert.ok(log.includes(`${kVisitorAddress} GET ${kPage} 200 `));

  assert.match((await visitor.get('/css/default.css')).headers['content-type'], /^text\/css/);
  assert.equal((await visitor.get('/css/../orlune.toml')).status, 404);
  assert.equal((await visitor.post(`${kPage}?p=e&act=save`, { title: 'x'.repeat(1 << 20) })).status, 413);
  await visitor.get(`${kPage}?p=l`);
  for (let i = 0; i < 6; ++i) assert.ok(isLoginForm(await visitor.get(`${kPage}?p=c`)));
  visitor.leave();
});

test('a node is killed under load', async () => {
  const load = await Load.begin(cluster, 'killed');
  await load.more(100);
  assert.ok(cluster.nodes[1].pageCount > 0);
  await cluster.nodes[1].end('SIGKILL');
  await load.more(200);
  await cluster.nodes[1].start();
  await load.more(100);
  await assertStoredOnce(load, 'killed');
  assert.ok(load.failures.length <= load.writerCount, JSON.stringify(load.failures));
});

test('the database is unavailable under load', async () => {
  const load = await Load.begin(cluster, 'away');
  await load.more(30);
  await cluster.controlDatabase('stop --mode=immediate');
  await Promise.all(cluster.nodes.map((node) => node.becomes(503)));
  await until('failures', () => load.failures.length > 3 * load.writerCount);
  await cluster.controlDatabase('start');
  await Promise.all(cluster.nodes.map((node) => node.becomes(200)));
  await load.more(30);
  await assertStoredOnce(load, 'away');
  const texts = /Could not open database|Service Unavailable|away for a moment/;
  const unclear = load.failures.filter(({ status, body }) => status !== 503 || !texts.test(body));
  assert.deepEqual(unclear, []);
});

test('the nodes are restarted one after another under load', async () => {
  const load = await Load.begin(cluster, 'restarted');
  await load.more(30);
  for (const node of cluster.nodes) {
    const ending = node.end('SIGTERM');
    await node.becomes(503);
    assert.equal(await ending, 0);
    await node.start();
    await node.becomes(200);
    await load.more(10);
  }
  await assertStoredOnce(load, 'restarted');
  assert.deepEqual(load.failures, []);
});
