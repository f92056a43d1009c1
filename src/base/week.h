#pragma once

#include <array>
#include <string>
#include <string_view>

#include "base/civil_time.h"

namespace orlune {

/// A user's week: its first day and its weekend.
class Week {
 public:
  /// `firstDayOfWeek` is 1 (Sunday) to 7 (Saturday); `weekend` lists weekday numbers joined with ", ".
  Week(int firstDayOfWeek, std::string_view weekend);

  /// 1 for the first day of the week to 7 for its last.
  int Position(Date date) const;
  /// The first day of the week that contains `date`.
  Date Start(Date date) const;
  /// 1 to 53. Week 1 is the first one with at least four days in its year; for weeks from Monday on that is
  /// the ISO 8601 week number.
  int WeekNumber(Date date) const;
  /// The weekend days as positions in this week, joined with ", " in the order in which they were given.
  const std::string& WeekendPositions() const { return weekendPositions_; }
  bool IsWeekend(Date date) const { return isWeekend_[static_cast<std::size_t>(Position(date))]; }

 private:
  int firstDay_;
  std::string weekendPositions_;
  std::array<bool, 8> isWeekend_{};
};

}  // namespace orlune
