// What the page in this window is: its form, its frame, its visitor. Read once, before anything is changed.

/** The form of the page; its fields may hide its properties (`name`, `id`), so these are read as attributes. */
export const form = document.querySelector('form[name=acForm]');

/** The framed content. */
export const content = document.querySelector('td.background');

export const isLogin = document.querySelector('form [name=Passwd]') !== null;
export const isView = form?.querySelector('[name=dm]') != null;

/** The calendar of a view; empty when the list of calendars does not have it. */
export const shownCalendar = () => form.querySelector('[name=cn] > option[selected]')?.value ?? '';

const sessionLink = document.querySelector('tr.plain a[href$="?p=l"]');

/** Identifies the logged-in user by the text of the logout link; null on pages of nobody. */
export const user =
  isLogin || !sessionLink || sessionLink.title === sessionLink.textContent ? null : sessionLink.textContent;

export const onLogout = (listener) => user && sessionLink.addEventListener('click', listener);

/** The query of an address of this page. */
export const queryOf = (address) => new URL(address, location.href).searchParams;

/** The path of the calendar's pages, also on one that has an address below it. */
const pagePath = sessionLink?.pathname ?? location.pathname;

/** The address below the page where the server answers the script. */
export const companion = (name) => `${pagePath.replace(/\/$/, '')}/${name}`;

/** The link of the toolbar to `p`, without an action. */
export const linkTo = (p) =>
  [...document.querySelectorAll('a[href]:has(> img)')].find(
    (link) => new URL(link.href).search === `?p=${p}` && link.href.startsWith(location.origin),
  );

/** A text without the blanks and colons at its ends. */
export const plainText = (text) => text.replace(/\s+/g, ' ').replace(/^ |[ :\uff1a]+$/g, '');

/** Makes an element; `properties` are attributes, `children` elements or texts. */
export function make(name, properties = {}, ...children) {
  const element = document.createElement(name);
  for (const [property, value] of Object.entries(properties)) element.setAttribute(property, value);
  element.append(...children);
  return element;
}

/** Posts `fields`, pairs of names and values, to this page. */
export function post(query, fields) {
  const inputs = fields.map(([name, value]) => make('input', { type: 'hidden', name, value }));
  const sending = make('form', { method: 'post', action: `${pagePath}?${query}`, hidden: '' }, ...inputs);
  document.body.append(sending);
  sending.submit();
}
