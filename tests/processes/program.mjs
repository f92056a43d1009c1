import { execFile, spawn } from 'node:child_process';
import { once } from 'node:events';
import { setTimeout as pause } from 'node:timers/promises';
import { promisify } from 'node:util';

export const run = promisify(execFile);

/** How long anything may take that comes to an end at all. */
const kDeadline = 20_000;

for (const signal of ['SIGINT', 'SIGTERM']) process.once(signal, () => process.exit(1));

/** A program that runs until it is told to end, and no longer than the tests. `log` is what it wrote so far. */
export class Program {
  #process;
  #ended;
  #killAtExit = () => this.#process.kill('SIGKILL');
  log = '';

  constructor(command, args) {
    this.#process = spawn(command, args, { stdio: ['ignore', 'pipe', 'pipe'] });
    this.#ended = once(this.#process, 'exit');
    process.once('exit', this.#killAtExit);
    for (const output of [this.#process.stdout, this.#process.stderr])
      output.setEncoding('utf8').on('data', (text) => (this.log += text));
  }

  get isRunning() {
    return this.#process.exitCode === null && this.#process.signalCode === null;
  }

  /** Sends the signal and resolves, once the program has ended, to its exit code. */
  async end(signal) {
    this.#process.kill(signal);
    const [code] = await this.#ended;
    process.off('exit', this.#killAtExit);
    return code;
  }
}

/** Resolves to what `look` finds as soon as that is something. */
export async function until(what, look) {
  for (const deadline = Date.now() + kDeadline; Date.now() < deadline; await pause(20)) {
    const found = await look();
    if (found) return found;
  }
  throw new Error(`waited in vain for ${what}`);
}
