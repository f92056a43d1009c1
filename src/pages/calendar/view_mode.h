#pragma once

#include <optional>
#include <string_view>

#include "base/civil_time.h"
#include "base/week.h"

namespace orlune {

/// The period that is shown at once. The values are in the order of the views' texts.
enum class ViewMode { kDay, kWeek, kMonth };

/// The mode for "day", "week" or "month"; nothing for any other name.
std::optional<ViewMode> ViewModeNamed(std::string_view name);

/// `date` moved by `steps` days, weeks or calendar months.
Date Stepped(Date date, ViewMode mode, int steps);

/// The days that a view shows, both inclusive.
struct Period {
  Date First;
  Date Last;
};

/// The day, week or month that contains `date`.
Period ShownPeriod(Date date, ViewMode mode, const Week& week);

}  // namespace orlune
