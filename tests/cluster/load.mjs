import { setTimeout as pause } from 'node:timers/promises';

import { until } from '../processes/program.mjs';
import { isCalendar, isLoginForm, kPage } from './visitor.mjs';

const kWriters = ['asa', 'jurgen', 'zoe', 'asa', 'jurgen', 'zoe'];

/** Concurrent users who view the calendar and add events without pause, and record the results. */
export class Load {
  #visitors;
  #running = [];
  #isEnding = false;
  #tag;
  /** Titles of events whose storing was acknowledged. */
  acknowledged = [];
  /** Every unexpected response: `{ what, status, body }`, status 0 without a response. */
  failures = [];

  /** `tag` begins the titles of the events. */
  static async begin(cluster, tag) {
    const load = new Load();
    load.#tag = tag;
    load.#visitors = kWriters.map(() => cluster.visitor());
    await Promise.all(load.#visitors.map((visitor, i) => visitor.logIn(kWriters[i])));
    load.#running = load.#visitors.map((visitor, i) => load.#work(visitor, i));
    return load;
  }

  get writerCount() {
    return kWriters.length;
  }

  get logouts() {
    return this.failures.filter(isLoginForm).length;
  }

  /** Waits until `count` more events are stored. */
  more(count) {
    const enough = this.acknowledged.length + count;
    return until('events to be stored', () => this.acknowledged.length >= enough);
  }

  async finish() {
    this.#isEnding = true;
    await Promise.all(this.#running);
    for (const visitor of this.#visitors) visitor.leave();
  }

  async #work(visitor, i) {
    for (let n = 0; !this.#isEnding; ++n) {
      const title = `${this.#tag} ${i}-${n}.`;
      const isStored = ({ status }) => status === 302;
      if (await this.#attempt('write', isStored, visitor.saveEvent(kWriters[i], title))) this.acknowledged.push(title);
      await this.#attempt('page', isCalendar, visitor.get(`${kPage}?p=c`));
    }
  }

  async #attempt(what, isWanted, sending) {
    const answer = await sending.catch((error) => ({ status: 0, body: String(error) }));
    if (isWanted(answer)) return true;
    this.failures.push({ what, status: answer.status, body: answer.body });
    await pause(20);
    return false;
  }
}
