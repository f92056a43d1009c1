#include "pages/calendar/view_mode.h"

#include "base/dates.h"

namespace orlune {

std::optional<ViewMode> ViewModeNamed(std::string_view name) {
  if (name == "day") return ViewMode::kDay;
  if (name == "week") return ViewMode::kWeek;
  if (name == "month") return ViewMode::kMonth;
  return std::nullopt;
}

Date Stepped(Date date, ViewMode mode, int steps) {
  switch (mode) {
    case ViewMode::kDay:
      return AddDays(date, steps);
    case ViewMode::kWeek:
      return AddDays(date, 7 * steps);
    case ViewMode::kMonth:
      return AddMonths(date, steps);
  }
  return date;
}

}  // namespace orlune
