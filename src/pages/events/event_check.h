#pragma once

#include <optional>

#include "pages/events/event_draft.h"

namespace orlune {

struct Visit;

/// Validates a draft and appends an alert for each invalid value. Returns the event with its dates and times
/// parsed, or nothing when the request has alerts.
std::optional<OL_Event> CheckEvent(Visit& visit, const EventDraft& draft);

}  // namespace orlune
