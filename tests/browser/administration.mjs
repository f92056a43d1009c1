/** The administrator's pages, each with what its list calls a new record. */
const kManagers = {
  um: 'New User',
  gm: 'New Group',
  cm: 'New Scheme',
  tm: 'New Type',
};

/** One of the administrator's four pages, as `visitor` uses it. */
export class Manager {
  #visitor;
  #prefix;

  /** `prefix` is um for users, gm for groups, cm for colour schemes, tm for event types. */
  constructor(visitor, prefix) {
    this.#visitor = visitor;
    this.#prefix = prefix;
  }

  /** Shows the record that is listed as `label`, or an empty form. */
  async open(label) {
    await this.#visitor.open(`?p=a&act=${this.#prefix}_list`);
    if (label) await this.#visitor.fillIn({ id: label });
  }

  /** Saves a new record, or the one that is listed as `label`, with these values. */
  async save(values, label) {
    await this.open(label);
    await this.#visitor.fillIn(values);
    await this.#visitor.press('Save');
  }

  async remove(label) {
    await this.open(label);
    await this.#visitor.press('Delete');
  }

  /** The labels of the records in the list that is shown. */
  async labels() {
    const [first, ...labels] = await this.#visitor.page.locator('[name=id] option').allInnerTexts();
    if (first !== `<${kManagers[this.#prefix]}>`) throw new Error(`The list begins with ${first}`);
    return labels;
  }
}
