import https from 'node:https';

export const kHost = 'calendar.example.org';
export const kPage = '/OLOrlune.asp';
/** The address of visitors, different from the proxy's. */
export const kVisitorAddress = '127.0.0.9';

const kTimeout = 30_000;
const kEventDay = '6/15/2035';

/** A client of the proxy that keeps cookies and connections. */
export class Visitor {
  #port;
  #agent;
  #cookies = new Map();

  /** `proxy` has the `port` of the proxy and the `certificate` to trust. */
  constructor({ port, certificate }) {
    this.#port = port;
    this.#agent = new https.Agent({ keepAlive: true, ca: certificate, servername: kHost });
  }

  leave() {
    this.#agent.destroy();
  }

  get(target) {
    return this.#send('GET', target);
  }

  post(target, fields) {
    return this.#send('POST', target, new URLSearchParams(fields).toString());
  }

  async logIn(name) {
    const answer = await this.post(`${kPage}?p=l`, { Name: name, Passwd: 'demo1' });
    if (answer.headers.location !== `${kPage}?p=c`) throw new Error(`cannot log in: ${answer.body}`);
    return answer;
  }

  saveEvent(owner, title) {
    const event = { title, calendar: owner, reptype: 'none', date1: kEventDay, date2: '', time1: '10:00' };
    return this.post(`${kPage}?p=e&act=save`, { ...event, time2: '11:00' });
  }

  /** The titles of the events that contain `text`, with duplicates. */
  async findTitles(text) {
    const search = { search: text, cal: '', reptype: '', date1: kEventDay };
    const { body } = await this.post(`${kPage}?p=e&act=results`, search);
    return [...body.matchAll(/>([^<>]*)<\/A> \(/g)].map((hit) => hit[1]);
  }

  #send(method, path, form = '') {
    const headers = { host: kHost, cookie: [...this.#cookies].map((pair) => pair.join('=')).join('; ') };
    if (method === 'POST') {
      headers.origin = `https://${kHost}`;
      headers['content-type'] = 'application/x-www-form-urlencoded';
      headers['content-length'] = Buffer.byteLength(form);
    }
    const address = { host: '127.0.0.1', port: this.#port, localAddress: kVisitorAddress };
    return new Promise((resolve, reject) => {
      const request = https.request({ ...address, agent: this.#agent, path, method, headers, timeout: kTimeout });
      request.on('response', (response) => this.#receive(response).then(resolve, reject));
      request.on('timeout', () => request.destroy(new Error('no answer')));
      request.on('error', reject);
      request.end(form);
    });
  }

  async #receive(response) {
    let body = '';
    for await (const text of response.setEncoding('utf8')) body += text;
    for (const line of response.headers['set-cookie'] ?? []) {
      const [, name, value] = /^([^=]+)=([^;]*)/.exec(line);
      this.#cookies.delete(name);
      if (value) this.#cookies.set(name, value);
    }
    return { status: response.statusCode, headers: response.headers, body };
  }
}

/** Whether a response is a page of a logged-in user. */
export function isCalendar(answer) {
  return answer.status === 200 && /<\/HTML>/i.test(answer.body) && !isLoginForm(answer);
}

export function isLoginForm(answer) {
  return answer.body.includes('NAME="Passwd"');
}
