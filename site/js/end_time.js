// The event form: the end time keeps its distance from the start time, an hour for a time that is chosen first.

import { form } from './page.js';

export function moveEndTime() {
  const { time1, time2 } = form?.elements ?? {};
  if (!time1 || !time2) return;
  const hour = (time1.length - 1) / 24; // options; the first one is no time
  let before = time1.selectedIndex;
  time1.addEventListener('change', () => {
    const start = time1.selectedIndex;
    const isLater = before > 0 && time2.selectedIndex > before;
    const isFirst = before === 0 && time2.selectedIndex === 0;
    const length = isLater ? time2.selectedIndex - before : hour;
    if (start > 0 && (isLater || isFirst)) time2.selectedIndex = Math.min(start + length, time2.length - 1);
    before = start;
  });
}
