import { mkdtemp, readFile, rm, writeFile } from 'node:fs/promises';
import http from 'node:http';
import { createServer } from 'node:net';
import { tmpdir, userInfo } from 'node:os';
import { join } from 'node:path';
import { fileURLToPath } from 'node:url';

import { makeDatabase } from './database.mjs';
import { codeBlock } from './manual.mjs';
import { Program, run, until } from './processes.mjs';
import { kHost, Visitor } from './visitor.mjs';

const repository = fileURLToPath(new URL('../..', import.meta.url));
const orlune = process.env.ORLUNE ?? join(repository, 'build/release/orlune');

/** One server of the calendar. It may be started again, at the address that it had. */
class Node {
  #configuration;
  #program;
  #earlierLog = '';
  address = '127.0.0.1:0';

  constructor(configuration) {
    this.#configuration = configuration;
  }

  async start() {
    this.#earlierLog = this.log;
    this.#program = new Program(orlune, ['serve', '--config', this.#configuration, '--listen', this.address]);
    this.address = await until('a node', () => {
      if (!this.#program.isRunning) throw new Error(`A node ended:\n${this.#program.log}`);
      return /^listening on http:\/\/([^/]+)/m.exec(this.#program.log)?.[1];
    });
  }

  /** What it logged since it was first started. */
  get log() {
    return this.#earlierLog + (this.#program?.log ?? '');
  }

  get isRunning() {
    return this.#program.isRunning;
  }

  get pageCount() {
    return this.log.match(/(GET|POST) \/OLOrlune\.asp \d+/g)?.length ?? 0;
  }

  /** What its health check answers, or 0 when it does not answer. */
  health() {
    return new Promise((resolve) => {
      const request = http.get(`http://${this.address}/healthz`, (response) => {
        response.resume();
        resolve(response.statusCode);
      });
      request.on('error', () => resolve(0));
    });
  }

  becomes(health) {
    return until(`health ${health} of a node`, async () => (await this.health()) === health);
  }

  end(signal) {
    return this.#program.end(signal);
  }
}

/** Three nodes with the configuration that the manual shows, the demo company, and the manual's nginx before them. */
export class Cluster {
  #folder;
  #proxy;
  #nginx;
  nodes = [];

  async start() {
    this.#folder = await mkdtemp(join(tmpdir(), 'orlune-cluster-'));
    this.database = await makeDatabase();
    await run(orlune, ['init', this.database.path, '--demo']);
    await this.#startNodes();
    await this.#startNginx();
  }

  async stop() {
    if (this.#nginx?.isRunning) await this.#nginx.end('SIGTERM');
    await Promise.all(this.nodes.filter((node) => node.isRunning).map((node) => node.end('SIGKILL')));
    await this.database?.drop();
    await rm(this.#folder, { recursive: true });
  }

  visitor() {
    return new Visitor(this.#proxy);
  }

  async #startNodes() {
    const configuration = join(this.#folder, 'orlune.toml');
    const text = await codeBlock('toml', {
      '/opt/orlune/site': join(repository, 'site'),
      '/etc/orlune/secret.key': join(this.#folder, 'secret.key'),
      '10.0.0.10': '127.0.0.1',
      'postgresql://orlune@10.0.0.20/orlune': this.database.path,
    });
    await writeFile(configuration, text);
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
      '/opt/orlune/site': join(repository, 'site'),
    });
    const configuration = join(this.#folder, 'nginx.conf');
    await writeFile(configuration, this.#aroundSite(site));
    this.#nginx = new Program('nginx', ['-p', this.#folder, '-e', 'stderr', '-c', configuration]);
    this.#proxy = { port, plainPort, certificate: await readFile(certificate) };
    await until('nginx', async () => {
      if (!this.#nginx.isRunning) throw new Error(`nginx ended:\n${this.#nginx.log}`);
      return (await this.visitor().get('/healthz').catch(() => null))?.status === 200;
    });
  }

  // What the configuration of a whole nginx has around a site.
  #aroundSite(site) {
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
