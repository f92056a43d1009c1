#include "base/week.h"

#include <charconv>

#include "base/date_text.h"
#include "base/dates.h"
#include "base/lists.h"

namespace orlune {

using std::chrono::days;
using std::chrono::weeks;

Week::Week(int firstDayOfWeek, std::string_view weekend) : firstDay_(firstDayOfWeek) {
  ForEachItem(weekend, [&](std::string_view item) {
    int position = 0;
    if (std::from_chars(item.data(), item.data() + item.size(), position).ec != std::errc{}) return;
    position -= firstDay_ - 1;
    if (position <= 0) position += 7;
    if (!weekendPositions_.empty()) weekendPositions_ += ", ";
    weekendPositions_ += std::to_string(position);
    if (position >= 1 && position <= 7) isWeekend_[static_cast<std::size_t>(position)] = true;
  });
}

int Week::Position(Date date) const {
  return (WeekdayNumber(date) - firstDay_ + 7) % 7 + 1;
}

Date Week::Start(Date date) const {
  return date - days{Position(date) - 1};
}

int Week::WeekNumber(Date date) const {
  const Date newYear = std::chrono::year{YearNumber(date)} / 1 / 1;
  const bool holdsWeekOne = Position(newYear) < 5;
  const auto wholeWeeks = std::chrono::duration_cast<weeks>(Start(date) - Start(newYear)).count();
  const int number = static_cast<int>(wholeWeeks) + (holdsWeekOne ? 1 : 0);
  if (number == 0) return WeekNumber(Start(date));
  if (number == 53 && YearNumber(Start(date) + days{3}) > YearNumber(date)) return 1;
  return number;
}

}  // namespace orlune
