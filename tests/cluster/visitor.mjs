import http from 'node:http';
import https from 'node:https';

export const kHost = 'calendar.example.org';
export const kPage = '/OLOrlune.asp';
/** The address that visitors of the proxy come from, another one than the proxy's. */
export const kVisitorAddress = '127.0.0.9';

const kPatience = 30_000;
const kEventDay = '6/15/2035';

/** One person with a browser that keeps cookies and connections, at the proxy or, where one is given, at a node. */
export class Visitor {
  #proxy;
  #agent;
  #cookies = new Map();

  /** `proxy` has the `port` of the proxy and the `certificate` to trust. */
  constructor(proxy) {
    this.#proxy = proxy;
    this.#agent = new https.Agent({ keepAlive: true, ca: proxy.certificate, servername: kHost });
  }

  leave() {
    this.#agent.destroy();
  }

  get(target, node) {
    return this.#send('GET', target, undefined, node);
  }

  post(target, fields, node) {
    return this.#send('POST', target, new URLSearchParams(fields).toString(), node);
  }

  async logIn(name, node) {
    const answer = await this.post(`${kPage}?p=l`, { Name: name, Passwd: 'demo1' }, node);
    if (answer.headers.location !== `${kPage}?p=c`) throw new Error(`cannot log in: ${answer.body}`);
    return answer;
  }

  saveEvent(owner, title) {
    const event = { title, calendar: owner, reptype: 'none', date1: kEventDay, date2: '', time1: '10:00' };
    return this.post(`${kPage}?p=e&act=save`, { ...event, time2: '11:00' });
  }

  /** The titles of the events that hold `text`, each as often as it is stored. */
  async findTitles(text) {
    const search = { search: text, cal: '', reptype: '', date1: kEventDay };
    const { body } = await this.post(`${kPage}?p=e&act=results`, search);
    return [...body.matchAll(/>([^<>]*)<\/A> \(/g)].map((hit) => hit[1]);
  }

  #send(method, target, form, node) {
    const [host, port] = node ? node.address.split(':') : ['127.0.0.1', this.#proxy.port];
    const headers = { host: node ? node.address : kHost };
    if (this.#cookies.size > 0) headers.cookie = [...this.#cookies].map((pair) => pair.join('=')).join('; ');
    if (form !== undefined) {
      headers.origin = node ? `http://${node.address}` : `https://${kHost}`;
      headers['content-type'] = 'application/x-www-form-urlencoded';
      headers['content-length'] = Buffer.byteLength(form);
    }
    const options = { host, port, path: target, method, headers, timeout: kPatience };
    return new Promise((resolve, reject) => {
      const request = node
        ? http.request(options)
        : https.request({ ...options, agent: this.#agent, localAddress: kVisitorAddress });
      request.on('response', (response) => this.#receive(response).then(resolve, reject));
      request.on('timeout', () => request.destroy(new Error('no answer')));
      request.on('error', reject);
      request.end(form);
    });
  }

  async #receive(response) {
    let body = '';
    for await (const text of response.setEncoding('utf8')) body += text;
    for (const line of response.headers['set-cookie'] ?? []) this.#keepCookie(line);
    return { status: response.statusCode, headers: response.headers, body };
  }

  #keepCookie(line) {
    const [, name, value] = /^([^=]+)=([^;]*)/.exec(line);
    if (value) this.#cookies.set(name, value);
    else this.#cookies.delete(name);
  }
}

/** Whether an answer is a page of somebody who is logged in. */
export function isCalendar(answer) {
  return answer.status === 200 && /<\/HTML>/i.test(answer.body) && !isLoginForm(answer);
}

export function isLoginForm(answer) {
  return answer.body.includes('NAME="Passwd"');
}
