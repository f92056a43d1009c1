#pragma once

#include <cstddef>
#include <vector>

#include "base/week.h"
#include "model/ol_event.h"

namespace orlune {

/// The days on which an event occurs, in ascending order, but at most the first `most` of them.
std::vector<Date> OccurrenceDates(const OL_Event& event, const Week& week, std::size_t most);

}  // namespace orlune
