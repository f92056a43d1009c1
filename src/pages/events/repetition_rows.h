#pragma once

#include "html/html.h"
#include "pages/events/event_draft.h"

namespace orlune {

struct PageContext;

/// The rows of the event form for the details of the event's kind of repetition, if it has any.
void AddRepetitionRows(Html& page, const PageContext& context, const OL_Event& event);

/// Hidden fields with the values of rows that the event's kind does not show, so that they are kept when the
/// kind is changed back.
Html HiddenRepetition(const PageContext& context, const EventDraft& draft);

}  // namespace orlune
