import { join } from 'node:path';
import { fileURLToPath } from 'node:url';

import { Program, until } from './program.mjs';

export const kRepository = fileURLToPath(new URL('../..', import.meta.url));
export const kOrlune = process.env.ORLUNE ?? join(kRepository, 'build/release/orlune');

/** A server of the calendar. When it is started again, it keeps its address. */
export class Server {
  #arguments;
  #program;
  #earlierLog = '';
  address = '127.0.0.1:0';

  constructor(configuration, ...options) {
    this.#arguments = ['serve', '--config', configuration, ...options];
  }

  async start() {
    this.#earlierLog = this.log;
    this.#program = new Program(kOrlune, [...this.#arguments, '--listen', this.address]);
    [, this.page, this.address] = await until('a server', () => {
      if (!this.#program.isRunning) throw new Error(`A server ended:\n${this.#program.log}`);
      return /^listening on (http:\/\/([^/]+)\S*)/m.exec(this.#program.log);
    });
  }

  /** Its log since the first start. */
  get log() {
    return this.#earlierLog + (this.#program?.log ?? '');
  }

  get isRunning() {
    return this.#program?.isRunning ?? false;
  }

  /** Sends the signal, waits for the server to exit and resolves to its exit code. */
  end(signal) {
    return this.#program.end(signal);
  }
}
