#pragma once

#include <string>
#include <vector>

#include "pages/events/event_draft.h"

namespace orlune {

struct ComponentState;

/// The form of one event, filled with `draft`. Throws DatabaseError.
void ShowEventForm(ComponentState& state, const EventDraft& draft);

/// The same for suggesting the event to other users, of whom `recipients` are chosen. Throws DatabaseError.
void ShowSuggestionForm(ComponentState& state, const EventDraft& draft,
                        const std::vector<std::string>& recipients);

}  // namespace orlune
