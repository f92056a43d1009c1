// Enhances the pages, which work without it. The shipped configuration links it in HeadData and, for the date picker,
// in HTMLFooter. The parts are independent of each other: the failure of one leaves the others alone.

// All parts are named here, so that the browser asks for them at once.
import './memory.js';
import './page.js';
import './texts.js';
import { listenForClicks, scrollToDay, tellWeekdays } from './calendar.js';
import { makeListsWait } from './choices.js';
import { moveEndTime } from './end_time.js';
import { paintGroupViews } from './group_views.js';
import { hintAtInvitation } from './hints.js';
import { tellHiddenHours } from './hours.js';
import { handleEnter, placeCursor } from './keyboard.js';
import { linkAddresses } from './links.js';
import { nameFields, nameImages, skipEmptyLinks } from './names.js';
import { describePage } from './page_head.js';
import { askBeforeDeleting } from './questions.js';
import { offerDraft, tellOutcome } from './outcomes.js';
import { watchForm } from './sending.js';
import { equipSmallWindow } from './windows.js';

const kParts = [
  watchForm,
  askBeforeDeleting,
  tellOutcome,
  offerDraft,
  nameFields,
  nameImages,
  skipEmptyLinks,
  tellWeekdays,
  scrollToDay,
  makeListsWait,
  handleEnter,
  placeCursor,
  listenForClicks,
  moveEndTime,
  linkAddresses,
  paintGroupViews,
  equipSmallWindow,
  describePage,
  tellHiddenHours,
  hintAtInvitation,
];

function start() {
  for (const part of kParts) {
    Promise.resolve()
      .then(part)
      .catch((error) => console.warn(`${part.name}: ${error}`));
  }
}

// A page may link the script twice, also by different addresses.
const page = document.documentElement.dataset;
if (!page.script) start();
page.script = 'orlune';
