const kPatience = 30_000;
// Where one adds calendars to a group view, the list of calendars holds hidden fields.
const kKnownWarning = 'An <input> tag was parsed within an open <select> tag';

/** One person at one browser window. Collects everything that goes wrong in it while the pages are used. */
export class Visitor {
  #address;
  #alerts = [];
  #faults = [];

  constructor(page, address) {
    this.page = page;
    this.#address = address;
    page.setDefaultTimeout(kPatience);
    this.#watch(page);
    page.on('popup', (popup) => this.#watch(popup));
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
    await this.follow(() => this.page.locator(`:is(.plain a, body > a):has(img[alt^="${title}"])`).click());
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
   * the `day` of the month, whether there is a link to edit the entry, and the computed colours of an entry
   * that has some of its own.
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
          day: parseInt(icon.parentElement.querySelector('.daynumber').textContent, 10),
          isEditable: parts.some((part) => part.nodeName === 'A' && part.title === 'Edit Event'),
          background: backgroundColor,
          colour: color,
        };
      }),
    );
  }

  /** The days of the month that is shown on which `title` stands. */
  async daysOf(title) {
    const entries = await this.entries();
    return entries.filter(({ text }) => text.endsWith(title)).map(({ day }) => day);
  }

  /** Opens the first entry called `title` of the view that is shown. */
  async openEntry(title) {
    await this.follow(() => this.page.getByTitle('Edit Event').filter({ hasText: title }).first().click());
  }

  /**
   * Fills in the form that is shown. Keys are names of fields; a value is the text to type, the label to
   * choose or a list of labels, or whether to tick. A choice that sends the form is followed to its page.
   */
  async fillIn(values) {
    for (const [name, value] of Object.entries(values)) {
      const field = this.page.locator(`[name="${name}"]:not([type=hidden])`);
      const { type, sendsForm } = await field
        .first()
        .evaluate((element) => ({ type: element.type, sendsForm: /submit/.test(element.onchange) }));
      const choose = () => field.selectOption([value].flat().map((label) => ({ label })));
      if (type === 'radio') await this.#radio(name, value).check();
      else if (type === 'checkbox') await field.setChecked(value);
      else if (!type.startsWith('select')) await field.fill(value);
      else if (sendsForm) await this.follow(choose);
      else await choose();
    }
  }

  /** What the form that is shown holds, in the manner of `fillIn`. Lists of several choices are arrays. */
  async filledIn() {
    return this.page.evaluate(() => {
      const valueOf = (field) => {
        if (field.type === 'radio') {
          const [label] = field.labels;
          return label ? label.title || label.textContent : field.nextSibling.data;
        }
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

  /** The choice with this label, or with this text behind it. */
  #radio(name, text) {
    const choices = this.page.locator(`[name="${name}"]`);
    const labelled = this.page.getByRole('radio', { name: text, exact: true });
    const followed = this.page.locator(`xpath=//input[following-sibling::text()[1]="${text}"]`);
    return choices.and(labelled.or(followed));
  }

  /** Presses the button of a form, and waits for the page that comes. */
  async press(label) {
    await this.follow(() => this.page.getByRole('button', { name: label, exact: true }).click());
  }

  async createEvent(values) {
    await this.open('?p=e');
    await this.fillIn(values);
    await this.press('Save');
  }

  /** Opens the popup of date field `number`, goes on by `months` and takes `day`, which closes the popup. */
  async pickDate(number, { months = 0, day }) {
    const [popup] = await Promise.all([
      this.page.waitForEvent('popup'),
      this.page.click(`[name=pick${number}]`),
    ]);
    await popup.waitForLoadState();
    for (; months > 0; --months)
      await Promise.all([popup.waitForEvent('load'), popup.getByTitle('Next Month').click()]);
    await Promise.all([
      popup.waitForEvent('close'),
      popup.getByRole('link', { name: String(day), exact: true }).click(),
    ]);
  }

  /** How many new messages the calendar announces. */
  async newMessages() {
    await this.open('?p=c');
    const hint = await this.page.locator('img[alt^="Message List"]').getAttribute('alt');
    return Number(/\((\d+) New\)$/.exec(hint)?.[1] ?? 0);
  }

  /** The list of messages, oldest first. */
  async messages() {
    await this.open('?p=m');
    return this.page.locator('tr:has(> td > img)').evaluateAll((rows) =>
      rows.map(({ cells: [icon, sender, subject] }) => ({
        sender: sender.innerText,
        subject: subject.innerText,
        isNew: icon.firstChild.src.endsWith('msg_newmail.gif'),
      })),
    );
  }

  /** Opens the newest message with this subject. */
  async openMessage(subject) {
    await this.open('?p=m');
    await this.follow(() => this.page.getByRole('link', { name: subject, exact: true }).last().click());
  }

  /** Resolves once the cursor stands in the field `name`. */
  async waitForFocus(name) {
    await this.page.waitForFunction((expected) => document.activeElement?.name === expected, name);
  }

  #watch(page) {
    const note = (fault) => this.#faults.push(fault);
    page.on('pageerror', (error) => note(`script error: ${error.message}`));
    page.on('console', (entry) => {
      const isFault = ['error', 'warning'].includes(entry.type());
      if (isFault && !entry.text().startsWith(kKnownWarning)) note(`console: ${entry.text()}`);
    });
    page.on('request', (request) => {
      if (new URL(request.url()).origin !== new URL(this.#address).origin)
        note(`foreign request: ${request.url()}`);
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
