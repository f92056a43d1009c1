import { kEmulatesMedia } from './browsers.mjs';

/** The style sheets, and the scheme of the system on which each is worn. */
export const kSchemes = [
  ['default.css', 'light'],
  ...(kEmulatesMedia ? [['default.css', 'dark']] : []),
  ['light.css', 'dark'],
  ['dark.css', 'light'],
  ['contrast.css', 'light'],
  ['nineties.css', 'light'],
];

/** Replaces the style sheet of the page. */
export async function wear(page, sheet, system) {
  if (kEmulatesMedia) await page.emulateMediaFeatures([{ name: 'prefers-color-scheme', value: system }]);
  await page.evaluate(
    (name) =>
      new Promise((resolve, reject) => {
        const worn = document.querySelector('link[rel=stylesheet]');
        const link = worn.cloneNode();
        link.href = worn.href.replace(/[^/]+$/, name);
        link.onload = () => resolve(worn.remove());
        link.onerror = reject;
        worn.after(link);
      }),
    sheet,
  );
}

const find = (visitor) => visitor.press('Find Events');

/** How to reach all pages: the address of the first one, what to fill in there, and how to go on. */
export const kPages = {
  asa: {
    'the month': ['?p=c&dm=month'],
    'the week': ['?p=c&dm=week'],
    'the day': ['?p=c&dm=day'],
    'a group view': ['?p=c&dm=day&cn=@engineeringteam'],
    'a single event': ['?p=e'],
    ...Object.fromEntries(
      ['Daily', 'By Weekday', 'Monthly', 'Yearly'].map((reptype) => [reptype, ['?p=e', { reptype }]]),
    ),
    'the recipients of a suggestion': ['?p=e&act=sendform'],
    'the search': ['?p=e&act=find'],
    'found events': ['?p=e&act=find', { search: 'Nordvik', date1: '3/1/2004' }, find],
    'no found event': ['?p=e&act=find', { search: 'no such event' }, find],
  },
  zoe: {
    'the messages': ['?p=m'],
    'a message': ['?p=m', {}, (visitor) => visitor.followLink('Thank you')],
    'a new message': ['?p=m&act=new'],
    'the preferences': ['?p=p'],
    'the password': ['?p=p&act=login'],
    'a new group view': ['?p=p&act=groups'],
    'devices and sharing': ['/sharing'],
  },
  admin: {
    'the colours of a group view': ['?p=p&act=groups', { id: 'Engineering Team' }],
    'a user': ['?p=a&act=um_list', { id: 'Daniel Kim (daniel)' }],
    'the administrator': ['?p=a&act=um_list', { id: 'Administrator (admin)' }],
    'a group': ['?p=a&act=gm_list', { id: 'Sports Club (sport)' }],
    'a scheme': ['?p=a&act=cm_list', { id: 'Dark (dark.css)' }],
    'a new event type': ['?p=a&act=tm_list'],
  },
};

/** Opens one of the pages. */
export async function reach(visitor, [query, fields = {}, next]) {
  await visitor.open(query);
  await visitor.fillIn(fields);
  await next?.(visitor);
}
