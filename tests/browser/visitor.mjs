const kPatience = 30_000;

/** One person at one browser window. Collects everything that goes wrong in it while the pages are used. */
export class Visitor {
  #address;
  #alerts = [];
  #faults = [];

  constructor(page, address) {
    this.page = page;
    this.#address = address;
    page.setDefaultTimeout(kPatience);
    this.#watch();
  }

  /** What went wrong so far: script errors, failed or foreign requests, alerts that nobody took. */
  get faults() {
    return [...this.#faults, ...this.#alerts.map((text) => `unexpected alert: ${text}`)];
  }

  /** The texts of the alerts that were shown since the last call. */
  takeAlerts() {
    return this.#alerts.splice(0);
  }

  /** `query` goes behind the page's address: "" or "?cd=3/15/2004". */
  async open(query = '') {
    await this.page.goto(this.#address + query);
  }

  /** Does what leads to another page, and waits until that has loaded. */
  async follow(action) {
    await Promise.all([this.page.waitForEvent('load'), action()]);
  }

  async logIn(name, password = 'demo1') {
    await this.open('?p=l');
    await this.submitLogin(name, password);
  }

  async submitLogin(name, password) {
    await this.page.fill('[name=Name]', name);
    await this.page.fill('[name=Passwd]', password);
    await this.follow(() => this.page.click('text="Login"'));
  }

  async pressButton(title) {
    await this.follow(() => this.page.locator(`.plain a:has(img[alt^="${title}"])`).click());
  }

  /** Fills in the selection row: `date`, `calendar` (its label), `view` as far as given; presses OK. */
  async choose({ date, calendar, view }) {
    if (date) await this.page.fill('[name=cd]', date);
    if (calendar) await this.page.selectOption('[name=cn]', { label: calendar });
    if (view) await this.page.selectOption('[name=dm]', { label: view });
    await this.follow(() => this.page.click('[type=button][value=OK]'));
  }

  async caption() {
    const text = await this.page.locator('.caltitle').textContent();
    return text.replaceAll('\u00a0', ' ');
  }

  async calendarTitle() {
    return this.page.locator('.calname').textContent();
  }

  /**
   * The entries of the month or week that is shown, in the order of the page: `text` with the time in front,
   * whether there is a link to edit the entry, and the computed colours of an entry that has some of its own.
   */
  async entries() {
    return this.page.locator('td > .daynumber ~ img').evaluateAll((icons) =>
      icons.map((icon) => {
        const parts = [];
        for (let node = icon.nextSibling; node.nodeName !== 'BR'; node = node.nextSibling) parts.push(node);
        const elements = parts.flatMap((part) => [part, ...(part.querySelectorAll?.('font') ?? [])]);
        const coloured = elements.find((element) => element.nodeName === 'FONT');
        const { backgroundColor, color } = coloured ? getComputedStyle(coloured) : {};
        return {
          text: parts
            .map((part) => part.textContent)
            .join('')
            .trim(),
          isEditable: parts.some((part) => part.nodeName === 'A' && part.title === 'Edit Event'),
          background: backgroundColor,
          colour: color,
        };
      }),
    );
  }

  /** Resolves once the cursor stands in the field `name`. */
  async waitForFocus(name) {
    await this.page.waitForFunction((expected) => document.activeElement?.name === expected, name);
  }

  #watch() {
    const note = (fault) => this.#faults.push(fault);
    this.page.on('pageerror', (error) => note(`script error: ${error.message}`));
    this.page.on('console', (entry) => {
      if (['error', 'warning'].includes(entry.type())) note(`console: ${entry.text()}`);
    });
    this.page.on('request', (request) => {
      if (new URL(request.url()).origin !== new URL(this.#address).origin)
        note(`foreign request: ${request.url()}`);
    });
    this.page.on('requestfailed', (request) => note(`${request.failure().errorText}: ${request.url()}`));
    this.page.on('response', (response) => {
      if (response.status() >= 400) note(`${response.status()}: ${response.url()}`);
    });
    this.page.on('dialog', async (dialog) => {
      this.#alerts.push(dialog.message());
      await dialog.accept();
    });
  }
}
