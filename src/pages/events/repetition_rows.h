#pragma once

#include "html/html.h"
#include "pages/events/event_draft.h"

namespace orlune {

struct PageContext;

/// The rows of the event form that say how an event of its kind repeats; none for the kinds that need no
/// more.
void AddRepetitionRows(Html& page, const PageContext& context, const OL_Event& event);

/// Hidden fields for what was typed into the rows that the event's kind does not show, so that it is still
/// there when the kind is changed back.
Html HiddenRepetition(const PageContext& context, const EventDraft& draft);

}  // namespace orlune
