#pragma once

#include <cstddef>
#include <vector>

#include "base/week.h"
#include "model/event_days.h"
#include "model/ol_event.h"

namespace orlune {

/// The days on which an event with all its `days` occurs, in ascending order, but at most the first `most` of
/// them.
std::vector<Date> OccurrenceDates(const OL_Event& event, const Week& week, std::size_t most,
                                  const EventDays& days = {});

/// Those of its days that still say something once the event has become `event`: no listed ones unless its
/// days are listed, and left out only those on which it would occur.
EventDays RemainingDays(const OL_Event& event, const Week& week, EventDays days);

}  // namespace orlune
