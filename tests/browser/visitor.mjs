// The list of calendars in the form of a group view contains hidden fields.
const kKnownWarning = 'An <input> tag was parsed within an open <select> tag';

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
  async follow(action) {
    await Promise.all([this.page.waitForEvent('load'), action()]);
  }

  async logIn(name, password = 'demo1') {
    await this.open('?p=l');
    await this.page.fill('[name=Name]', name);
    await this.page.fill('[name=Passwd]', password);
    await this.press('Login');
  }

  /** Presses a button and waits for the new page. */
  async press(label) {
    await this.follow(() => this.page.getByRole('button', { name: label, exact: true }).click());
  }

  /** Follows the first link with this text or image text. */
  async followLink(text) {
    await this.follow(() => this.page.getByRole('link', { name: text }).first().click());
  }

  /** Clicks an element that opens a popup; resolves to the popup. */
  async popupOf(selector) {
    const [popup] = await Promise.all([this.page.waitForEvent('popup'), this.page.click(selector)]);
    await popup.waitForLoadState();
    return popup;
  }

  async caption() {
    return (await this.page.textContent('.caltitle')).replaceAll('\u00a0', ' ');
  }

  /** The days of the month view with an entry that ends in `title`. */
  async daysOf(title) {
    return this.page.locator('td:has(> .daynumber)').evaluateAll((days, text) => {
      const holds = ({ innerText }) => innerText.split('\n').some((line) => line.trim().endsWith(text));
      return days.filter(holds).map((day) => parseInt(day.querySelector('.daynumber').innerText, 10));
    }, title);
  }

  /**
   * Fills in the form. Keys are names of fields; a value is a text, the label of an option or a list of labels, whether
   * to check a box, or the value of a radio button. After an option that submits the form, waits for the new page.
   */
  async fillIn(values) {
    for (const [name, value] of Object.entries(values)) {
      const field = this.page.locator(`[name="${name}"]:not([type=hidden])`);
      const [type, change] = await field.first().evaluate(({ type, onchange }) => [type, String(onchange)]);
      const choose = () => field.selectOption([value].flat().map((label) => ({ label })));
      if (type === 'radio') await this.page.check(`[name="${name}"][value="${value}"]`);
      else if (type === 'checkbox') await field.setChecked(value);
      else if (!type.startsWith('select')) await field.fill(value);
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

  #watch(page) {
    const note = (fault) => this.#faults.push(fault);
    page.on('pageerror', (error) => note(`script error: ${error.message}`));
    page.on('console', (entry) => {
      const isFault = ['error', 'warning'].includes(entry.type());
      if (isFault && !entry.text().startsWith(kKnownWarning)) note(`console: ${entry.text()}`);
    });
    page.on('request', (request) => {
      if (!request.url().startsWith(new URL(this.#address).origin)) note(`foreign request: ${request.url()}`);
    });
    page.on('requestfailed', (request) => note(`${request.failure().errorText}: ${request.url()}`));
    page.on('response', (response) => {
      if (response.status() >= 400) note(`${response.status()}: ${response.url()}`);
    });
    page.on('dialog', async (dialog) => {
      this.#alerts.push(dialog.message());
      await dialog.accept();
    });
  }
}
