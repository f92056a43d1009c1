import { setTimeout as pause } from 'node:timers/promises';

import { isCalendar, isLoginForm, kPage } from './visitor.mjs';

const kWriters = ['asa', 'jurgen', 'zoe', 'asa', 'jurgen', 'zoe'];

/** People who look at the calendar and add events without pause, and remember what became of it. */
export class Load {
  #visitors;
  #running = [];
  #isEnding = false;
  #tag;
  /** Titles of events whose storing was answered. */
  acknowledged = [];
  /** Every answer that was not the wanted one: `{ what, status, body }`, status 0 without an answer. */
  failures = [];
  pages = 0;
  logouts = 0;

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

  async finish() {
    this.#isEnding = true;
    await Promise.all(this.#running);
    for (const visitor of this.#visitors) visitor.leave();
  }

  async #work(visitor, i) {
    for (let n = 0; !this.#isEnding; ++n) {
      const title = `${this.#tag} ${i}-${n}.`;
      const saved = await this.#attempt('write', () => visitor.saveEvent(kWriters[i], title));
      if (saved.status === 302) this.acknowledged.push(title);
      else await this.#note('write', saved);
      const page = await this.#attempt('page', () => visitor.get(`${kPage}?p=c`));
      if (isCalendar(page)) this.pages += 1;
      else await this.#note('page', page);
    }
  }

  async #attempt(what, send) {
    return send().catch((error) => ({ status: 0, body: String(error) }));
  }

  async #note(what, { status, body }) {
    this.failures.push({ what, status, body });
    if (isLoginForm({ body })) this.logouts += 1;
    await pause(20);
  }
}
