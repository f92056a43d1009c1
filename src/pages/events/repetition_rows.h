#pragma once

#include "html/html.h"
#include "pages/events/event_draft.h"

namespace orlune {

struct Visit;

/// The rows of the event form that say how an event of its kind repeats; none for the kinds that need no
/// more.
void AddRepetitionRows(Html& page, const Visit& visit, const OL_Event& event);

/// Hidden fields for what was typed into the rows that the event's kind does not show, so that it is still
/// there when the kind is changed back.
Html HiddenRepetition(const Visit& visit, const EventDraft& draft);

}  // namespace orlune
