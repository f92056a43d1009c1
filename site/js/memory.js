// What one page of the window leaves for the next. Lost with the window; each page's path has its own.

const keyOf = (name) => `orlune ${location.pathname} ${name}`;

/** Null when there is nothing, or when the browser keeps nothing. */
export function recall(name) {
  try {
    return JSON.parse(sessionStorage.getItem(keyOf(name)));
  } catch {
    return null;
  }
}

export function remember(name, value) {
  try {
    sessionStorage.setItem(keyOf(name), JSON.stringify(value));
  } catch {
    // Full, or refused by the browser: the next page does without.
  }
}

export function forget(name) {
  try {
    sessionStorage.removeItem(keyOf(name));
  } catch {
    // Nothing was kept.
  }
}

/** Recalls and forgets. */
export function take(name) {
  const value = recall(name);
  if (value !== null) forget(name);
  return value;
}
