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

Period ShownPeriod(Date date, ViewMode mode, const Week& week) {
  switch (mode) {
    case ViewMode::kDay:
      return {date, date};
    case ViewMode::kWeek:
      return {AddDays(week.Start(date), 0), AddDays(week.Start(date), 6)};
    case ViewMode::kMonth:
      return {date - std::chrono::days{DayOfMonth(date) - 1}, LastDayOfMonth(date)};
  }
  return {date, date};
}

}  // namespace orlune
