#pragma once

#include <cstddef>
#include <vector>

#include "base/week.h"
#include "model/ol_event.h"

namespace orlune {

/// The days from an event's `BeginDate` to its `EndDate` on which it falls, in order, but no more than the
/// first `most`.
std::vector<Date> OccurrenceDates(const OL_Event& event, const Week& week, std::size_t most);

}  // namespace orlune
