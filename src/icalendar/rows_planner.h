#pragma once

#include <vector>

#include "base/week.h"
#include "exchange/calendar_object.h"
#include "icalendar/object_parts.h"

namespace orlune {

/// How the rows of an object are made.
struct PlanSettings {
  const orlune::Week& Week;
  Date ListTo;  ///< days of series without end are listed to this one
};

struct PlannedRows {
  std::vector<ObjectEvent> Rows;  ///< with days, times, and the texts of their events
  bool ListsAhead = false;
  Date ListedTo;
};

/// Throws InvalidCalendarText. The category is not set, nor is a title where there is none.
PlannedRows PlanRows(const ObjectParts& parts, TextZones& zones, const PlanSettings& settings,
                     WorkBudget& budget);

}  // namespace orlune
