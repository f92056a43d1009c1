import { mkdtemp, readFile, rm, writeFile } from 'node:fs/promises';
import { createServer } from 'node:net';
import { tmpdir, userInfo } from 'node:os';
import { join } from 'node:path';

import { Program, run, until } from '../processes/program.mjs';
import { kOrlune, kRepository, Server } from '../processes/server.mjs';
import { kHost, Visitor } from './visitor.mjs';

class Node extends Server {
  get pageCount() {
    return this.log.match(/(GET|POST) \/OLOrlune\.asp \d+/g)?.length ?? 0;
  }

  /** Waits until the health check responds with this status. */
  becomes(health) {
    const ask = async () => {
      const answer = await fetch(`http://${this.address}/healthz`);
      await answer.text();
      return answer.status;
    };
    return until(`health ${health} of a node`, async () => (await ask().catch(() => 0)) === health);
  }
}

/**
 * Three nodes with the configuration of docs/scaling.md and the demo company, behind nginx with the configuration of
 * docs/scaling.md. The database is ORLUNE_TEST_POSTGRESQL.
 */
export class Cluster {
  #folder;
  #proxy;
  #nginx;
  nodes = [];

  async start() {
    this.#folder = await mkdtemp(join(tmpdir(), 'orlune-cluster-'));
    await run(kOrlune, ['init', process.env.ORLUNE_TEST_POSTGRESQL, '--demo']);
    await this.#startNodes();
    await this.#startNginx();
  }

  async stop() {
    if (this.#nginx?.isRunning) await this.#nginx.end('SIGTERM');
    const codes = await Promise.all(this.nodes.map((node) => node.isRunning && node.end('SIGTERM')));
    await rm(this.#folder, { recursive: true });
    if (codes.some((code) => code)) throw new Error(`Nodes ended with ${codes}`);
  }

  visitor() {
    return new Visitor(this.#proxy);
  }

  /** Runs pg_ctl with the arguments `how` for the database server. */
  controlDatabase(how) {
    return run('sh', ['-c', `exec $0 $1`, process.env.ORLUNE_TEST_POSTGRESQL_CTL, how]);
  }

  async #startNodes() {
    const configuration = await this.#write('orlune.toml', await codeBlock('toml', {
      '/opt/orlune/site': join(kRepository, 'site'),
      '/etc/orlune/secret.key': join(this.#folder, 'secret.key'),
      '10.0.0.10': '127.0.0.1',
      'postgresql://orlune@10.0.0.20/orlune': process.env.ORLUNE_TEST_POSTGRESQL,
    }));
    for (let i = 0; i < 3; ++i) {
      this.nodes.push(new Node(configuration));
      await this.nodes[i].start();
    }
  }

  async #startNginx() {
    const [certificate, key] = [join(this.#folder, 'calendar.pem'), join(this.#folder, 'calendar.key')];
    await makeCertificate(certificate, key);
    const [port, plainPort] = [await freePort(), await freePort()];
    const site = await codeBlock('nginx', {
      '10.0.0.11:8080': this.nodes[0].address,
      '10.0.0.12:8080': this.nodes[1].address,
      '10.0.0.13:8080': this.nodes[2].address,
      'listen 80;': `listen 127.0.0.1:${plainPort};`,
      'listen 443 ': `listen 127.0.0.1:${port} `,
      '/etc/ssl/calendar.pem': certificate,
      '/etc/ssl/private/calendar.key': key,
      '/opt/orlune/site': join(kRepository, 'site'),
    });
    const configuration = await this.#write('nginx.conf', aroundSite(site));
    this.#nginx = new Program('/usr/sbin/nginx', ['-p', this.#folder, '-e', 'stderr', '-c', configuration]);
    this.#proxy = { port, certificate: await readFile(certificate) };
    await until('nginx', async () => {
      if (!this.#nginx.isRunning) throw new Error(`nginx ended:\n${this.#nginx.log}`);
      return (await this.visitor().get('/healthz').catch(() => null))?.status === 200;
    });
  }

  async #write(name, text) {
    const file = join(this.#folder, name);
    await writeFile(file, text);
    return file;
  }
}

/**
 * The only code block in `language` of docs/scaling.md: the documented configuration is the tested one. Each key of
 * `replacements` has to occur in it, and is replaced by its value.
 */
async function codeBlock(language, replacements) {
  const manual = await readFile(join(kRepository, 'docs/scaling.md'), 'utf8');
  const blocks = [...manual.matchAll(/^```(\w+)\n(.*?)^```$/gms)].filter((block) => block[1] === language);
  if (blocks.length !== 1) throw new Error(`docs/scaling.md has ${blocks.length} blocks in ${language}`);
  return Object.entries(replacements).reduce((text, [from, to]) => {
    if (!text.includes(from)) throw new Error(`docs/scaling.md does not have ${from}`);
    return text.replaceAll(from, to);
  }, blocks[0][2]);
}

/** A complete nginx configuration with this site. */
function aroundSite(site) {
  const temporary = ['client_body', 'proxy', 'fastcgi', 'uwsgi', 'scgi'];
  return `${process.getuid() === 0 ? `user ${userInfo().username};` : ''}
    daemon off;
    pid nginx.pid;
    worker_processes 2;
    events { worker_connections 512; }
    http {
      include /etc/nginx/mime.types;
      access_log off;
      ${temporary.map((name) => `${name}_temp_path ${name};`).join('\n')}
      ${site}
    }`;
}

function makeCertificate(certificate, key) {
  const what = ['-x509', '-newkey', 'ec', '-pkeyopt', 'ec_paramgen_curve:prime256v1', '-nodes', '-days', '2'];
  const whose = ['-subj', `/CN=${kHost}`, '-addext', `subjectAltName=DNS:${kHost}`];
  return run('openssl', ['req', ...what, ...whose, '-out', certificate, '-keyout', key]);
}

function freePort() {
  return new Promise((resolve, reject) => {
    const server = createServer().on('error', reject);
    server.listen(0, '127.0.0.1', () => {
      const { port } = server.address();
      server.close(() => resolve(port));
    });
  });
}
