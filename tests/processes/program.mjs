import { execFile, spawn } from 'node:child_process';
import { once } from 'node:events';
import { setTimeout as pause } from 'node:timers/promises';
import { promisify } from 'node:util';

export const run = promisify(execFile);

/** Milliseconds that `until` waits. */
const kTimeout = 20_000;

for (const signal of ['SIGINT', 'SIGTERM']) process.once(signal, () => process.exit(1));

/** A child process that is killed when the tests exit. `log` is its output so far. */
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

  /** Sends the signal, waits for the program to exit and resolves to its exit code. */
  async end(signal) {
    this.#process.kill(signal);
    const [code] = await this.#ended;
    process.off('exit', this.#killAtExit);
    return code;
  }
}

/** Polls `look` until its result is truthy, and resolves to it. Rejects after the timeout, with `what` in the error. */
export async function until(what, look) {
  for (const deadline = Date.now() + kTimeout; Date.now() < deadline; await pause(20)) {
    const found = await look();
    if (found) return found;
  }
  throw new Error(`timeout after ${kTimeout} ms waiting for ${what}`);
}
