#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "base/civil_time.h"

namespace orlune {

/// How much work one text may cause, in days that are looked at. Throws InvalidCalendarText when that is more
/// than is left, and from then on.
class WorkBudget {
 public:
  explicit WorkBudget(std::size_t days) : left_(days) {}
  void Spend(std::size_t count);

 private:
  std::size_t left_;
};

/// A recurrence rule (RFC 5545, section 3.3.10) in the civil time of its first occurrence.
class Recurrence {
 public:
  /// Throws InvalidCalendarText for what is no rule, and for rules that occur several times a day without
  /// BYHOUR.
  explicit Recurrence(std::string_view text);

  bool HasUntil() const { return until_.has_value(); }
  /// The civil time that UNTIL says, and whether it is one of UTC.
  const DateTime& Until() const { return *until_; }
  bool IsUntilUtc() const { return isUntilUtc_; }
  void SetUntil(const DateTime& until) { until_ = until; }
  bool HasCount() const { return count_.has_value(); }
  bool IsEndless() const { return !until_ && !count_; }

  struct Days {
    std::vector<DateTime> Times;  ///< in ascending order
    bool IsComplete = true;       ///< there are no later ones
  };
  /// The occurrences from `begin` to the day `last`, at most `most` of them; `begin` itself only when the
  /// rule gives it.
  Days Expand(const DateTime& begin, Date last, std::size_t most, WorkBudget& budget) const;

 private:
  enum class Unit { kDay, kWeek, kMonth, kYear };
  struct DayOfWeek {
    int Number = 0;   ///< of such weekdays in the month or year, from its end when negative; 0: each
    int Weekday = 0;  ///< 0 = Sunday
  };
  class Walk;

  void ReadPart(std::string_view name, std::string_view value);
  void ReadFrequency(std::string_view value);
  void ReadUntil(std::string_view value);
  void ReadDaysOfWeek(std::string_view value);
  void Check() const;
  Recurrence WithDefaults(const DateTime& begin) const;
  bool IsDay(Date date) const;
  bool IsMonthDay(Date date) const;
  bool IsYearDay(Date date) const;
  bool IsInWeekNumber(Date date) const;
  bool IsDayOfWeek(Date date) const;
  bool IsNumberedDayOfWeek(Date date, const DayOfWeek& day) const;
  Date PeriodStart(Date date) const;
  std::vector<TimeOfDay> TimesOfDay() const;

  std::optional<Unit> unit_;
  int interval_ = 1;
  std::optional<std::size_t> count_;
  std::optional<DateTime> until_;
  bool isUntilUtc_ = false;
  int weekStart_ = 1;
  std::vector<int> months_;
  std::vector<int> weekNumbers_;
  std::vector<int> yearDays_;
  std::vector<int> monthDays_;
  std::vector<DayOfWeek> daysOfWeek_;
  std::vector<int> hours_;
  std::vector<int> minutes_;
  std::vector<int> seconds_;
  std::vector<int> positions_;
};

}  // namespace orlune
