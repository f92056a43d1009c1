/** Replaces the text of a field as typing does, but at once. */
function typeInto(field, text) {
  field.select();
  document.execCommand(text ? 'insertText' : 'delete', false, text);
}

/** A user of one browser window. Records all errors in it. */
export class Visitor {
  #address;
  #alerts = [];
  #faults = [];

  constructor(page, address) {
    this.page = page;
    this.#address = address;
    this.#watch(page);
    page.on('popup', (popup) => this.#watch(popup));
  }

  /** The errors so far: script errors, failed requests, requests to other sites, unexpected alerts. */
  get faults() {
    return [...this.#faults, ...this.#alerts.map((text) => `unexpected alert: ${text}`)];
  }

  /** The texts of the alerts since the last call. */
  takeAlerts() {
    return this.#alerts.splice(0);
  }

  /** `query` is appended to the page's address: "" or "?cd=3/15/2004". */
  async open(query = '') {
    await this.page.goto(this.#address + query);
  }

  /** Runs `action`, which navigates, and waits until the new page has loaded. */
  async follow(action, page = this.page) {
    await Promise.all([page.waitForNavigation(), action()]);
  }

  async logIn(name, password = 'demo1') {
    await this.open('?p=l');
    await this.fillIn({ Name: name, Passwd: password });
    await this.press('Login');
  }

  /** Presses a button and waits for the new page. */
  async press(label) {
    await this.follow(() => this.page.click(`:is([type=button], [type=submit])[value="${label}"]`));
  }

  /** Follows the first link whose text or image text contains `text`. */
  async followLink(text, page = this.page) {
    const link = await page.evaluateHandle((wanted) => {
      const nameOf = (link) => link.innerText + [...link.querySelectorAll('img')].map(({ alt }) => alt);
      return [...document.links].find((link) => nameOf(link).includes(wanted));
    }, text);
    await this.follow(() => link.click(), page);
  }

  /** Clicks an element that opens a popup; resolves to the popup. */
  async popupOf(selector) {
    const opened = new Promise((resolve) => this.page.once('popup', resolve));
    await this.page.click(selector);
    const popup = await opened;
    await popup.waitForFunction(() => location.href !== 'about:blank' && document.readyState === 'complete');
    return popup;
  }

  textOf(selector) {
    return this.page.$eval(selector, ({ innerText }) => innerText);
  }

  async caption() {
    return (await this.textOf('.caltitle')).replaceAll('\u00a0', ' ');
  }

  /** The days of the month view with an entry that ends in `title`. */
  daysOf(title) {
    return this.page.$$eval(
      'td:has(> .daynumber)',
      (days, text) => {
        const holds = ({ innerText }) => innerText.split('\n').some((line) => line.trim().endsWith(text));
        return days.filter(holds).map((day) => parseInt(day.querySelector('.daynumber').innerText, 10));
      },
      title,
    );
  }

  /**
   * Fills in the form. Keys are names of fields; a value is a text, the label of an option or a list of labels, whether
   * to check a box, or the value of a radio button. After an option that submits the form, waits for the new page.
   */
  async fillIn(values) {
    for (const [name, value] of Object.entries(values)) {
      const selector = `[name="${name}"]:not([type=hidden])`;
      const [type, change] = await this.page.$eval(selector, ({ type, onchange }) => [type, String(onchange)]);
      const choose = () => this.choose(selector, [value].flat());
      if (type === 'radio') await this.page.click(`${selector}[value="${value}"]`);
      else if (type === 'checkbox') await this.#check(selector, value);
      else if (!type.startsWith('select')) await this.page.$eval(selector, typeInto, value);
      else if (change.includes('submit')) await this.follow(choose);
      else await choose();
    }
  }

  /** The values of the form, in the format of `fillIn`. Lists with several choices are arrays. */
  async filledIn() {
    return this.page.evaluate(() => {
      const valueOf = (field) => {
        if (field.type === 'checkbox') return field.checked;
        if (!field.type.startsWith('select')) return field.value;
        const labels = [...field.selectedOptions].map(({ text }) => text);
        return field.multiple ? labels : labels.join();
      };
      const isShown = ({ type, checked }) =>
        !['hidden', 'button', 'submit'].includes(type) && (type !== 'radio' || checked);
      const fields = [...document.forms.acForm.elements].filter(isShown);
      return Object.fromEntries(fields.map((field) => [field.name, valueOf(field)]));
    });
  }

  /** The labels of the options of a list. */
  optionsOf(name) {
    return this.page.$eval(`[name="${name}"]`, ({ options }) => [...options].map(({ text }) => text));
  }

  /** Chooses the options with these labels in a list. */
  async choose(selector, labels) {
    const options = ({ options }) => [...options].map(({ text, value }) => [text, value]);
    const values = new Map(await this.page.$eval(selector, options));
    if (!labels.every((label) => values.has(label))) throw new Error(`not all in ${selector}: ${labels.join(', ')}`);
    await this.page.select(selector, ...labels.map((label) => values.get(label)));
  }

  async #check(selector, isWanted) {
    if ((await this.page.$eval(selector, ({ checked }) => checked)) !== isWanted) await this.page.click(selector);
  }

  #watch(page) {
    const note = (fault) => this.#faults.push(fault);
    page.on('pageerror', (error) => note(`script error: ${error.message}`));
    page.on('console', (entry) => {
      if (['error', 'warn'].includes(entry.type())) note(`console: ${entry.text()}`);
    });
    page.on('request', (request) => {
      if (!request.url().startsWith(new URL(this.#address).origin)) note(`foreign request: ${request.url()}`);
    });
    page.on('requestfailed', (request) => {
      const { errorText } = request.failure();
      if (!errorText.endsWith('ABORTED')) note(`${errorText}: ${request.url()}`); // aborted when the page is left
    });
    page.on('response', (response) => {
      if (response.status() >= 400) note(`${response.status()}: ${response.url()}`);
    });
    page.on('dialog', async (dialog) => {
      this.#alerts.push(dialog.message());
      await dialog.accept();
    });
  }
}
