#pragma once

#include <string>
#include <vector>

#include "pages/events/event_draft.h"

namespace orlune {

struct Visit;

/// The form of one event with the values of `draft`. Throws DatabaseError.
void ShowEventForm(Visit& visit, const EventDraft& draft);

/// The same for suggesting the event to other users; `recipients` are selected. Throws DatabaseError.
void ShowSuggestionForm(Visit& visit, const EventDraft& draft, const std::vector<std::string>& recipients);

}  // namespace orlune
