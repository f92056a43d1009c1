#pragma once

#include <vector>

#include "model/event_type.h"
#include "store/query.h"

namespace orlune {

// The table EventTypes.

Query<std::vector<EventTypeEntry>> AllEventTypes();

}  // namespace orlune
