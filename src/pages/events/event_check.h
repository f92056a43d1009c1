#pragma once

#include <optional>

#include "pages/events/event_draft.h"

namespace orlune {

struct Visit;

/// Checks what was typed and appends a text to the request's errors for everything that is wrong. Returns the
/// event with its dates and times read, or nothing when the request has errors.
std::optional<OL_Event> CheckEvent(Visit& visit, const EventDraft& draft);

}  // namespace orlune
