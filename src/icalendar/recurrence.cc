#include "icalendar/recurrence.h"

#include <algorithm>
#include <array>
#include <string>

#include "base/ascii.h"
#include "base/dates.h"
#include "base/text.h"
#include "exchange/calendar_text.h"
#include "icalendar/time_values.h"

namespace orlune {

using std::chrono::days;
using std::chrono::months;
using std::chrono::year_month_day;
using std::chrono::years;

namespace {

constexpr std::size_t kMostValues = 400;
constexpr int kMostInterval = 10'000;
constexpr std::array<std::string_view, 7> kWeekdays{"SU", "MO", "TU", "WE", "TH", "FR", "SA"};

[[noreturn]] void Refuse(const std::string& sentence) {
  throw InvalidCalendarText(TextFault::kInvalidText, sentence);
}

int WeekdayOf(std::string_view name) {
  const auto found = std::ranges::find_if(
      kWeekdays, [name](std::string_view weekday) { return EqualsIgnoringAsciiCase(weekday, name); });
  if (found == kWeekdays.end()) Refuse("A rule has an unknown day of the week.");
  return static_cast<int>(found - kWeekdays.begin());
}

int NumberWithin(std::string_view text, int least, int most) {
  if (text.starts_with('+')) text.remove_prefix(1);
  const auto number = WholeNumber(text);
  if (!number || *number < least || *number > most) Refuse("A rule has a number that is out of its range.");
  return *number;
}

/// Numbers that may be counted from the end, too; never 0.
std::vector<int> NumbersWithin(std::string_view value, int least, int most) {
  std::vector<int> numbers;
  for (const std::string_view item : ValueItems(value)) {
    if (numbers.size() == kMostValues) Refuse("A rule has too many numbers.");
    numbers.push_back(NumberWithin(item, least, most));
    if (numbers.back() == 0 && least < 0) Refuse("A rule has a number that is out of its range.");
  }
  std::ranges::sort(numbers);
  numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
  return numbers;
}

bool Holds(const std::vector<int>& numbers, int number) {
  return std::ranges::binary_search(numbers, number);
}

/// Whether the list names the `number`th of `of`, counted from either end.
bool HoldsEither(const std::vector<int>& numbers, int number, int of) {
  return Holds(numbers, number) || Holds(numbers, number - of - 1);
}

int YearDay(Date date) {
  return static_cast<int>((date - Date{year_month_day{date}.year() / 1 / 1}).count()) + 1;
}

int Weekday(Date date) {
  return WeekdayNumber(date) - 1;
}

/// The first day of the week with number 1 of a year whose weeks begin on `weekStart`.
Date FirstWeek(std::chrono::year year, int weekStart) {
  const Date fourth{year / 1 / 4};
  return fourth - days{(Weekday(fourth) - weekStart + 7) % 7};
}

}  // namespace

void WorkBudget::Spend(std::size_t count) {
  if (count > left_) {
    left_ = 0;
    throw InvalidCalendarText(TextFault::kTooManyDays, "The rules of the events take too long to work out.");
  }
  left_ -= count;
}

Recurrence::Recurrence(std::string_view text) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(';'), text.size());
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (part.empty()) continue;
    const std::size_t equals = part.find('=');
    if (equals == std::string_view::npos) Refuse("A rule has a part without a value.");
    ReadPart(part.substr(0, equals), part.substr(equals + 1));
  }
  Check();
}

void Recurrence::ReadPart(std::string_view name, std::string_view value) {
  const auto is = [name](std::string_view other) { return EqualsIgnoringAsciiCase(name, other); };
  if (is("FREQ")) return ReadFrequency(value);
  if (is("UNTIL")) return ReadUntil(value);
  if (is("BYDAY")) return ReadDaysOfWeek(value);
  if (is("WKST")) {
    weekStart_ = WeekdayOf(value);
  } else if (is("INTERVAL")) {
    interval_ = NumberWithin(value, 1, kMostInterval);
  } else if (is("COUNT")) {
    const auto count = WholeNumber<std::size_t>(value);
    if (!count || *count == 0) Refuse("A rule has a COUNT that is no number.");
    count_ = count;
  } else if (is("BYMONTH")) {
    months_ = NumbersWithin(value, 1, 12);
  } else if (is("BYWEEKNO")) {
    weekNumbers_ = NumbersWithin(value, -53, 53);
  } else if (is("BYYEARDAY")) {
    yearDays_ = NumbersWithin(value, -366, 366);
  } else if (is("BYMONTHDAY")) {
    monthDays_ = NumbersWithin(value, -31, 31);
  } else if (is("BYHOUR")) {
    hours_ = NumbersWithin(value, 0, 23);
  } else if (is("BYMINUTE")) {
    minutes_ = NumbersWithin(value, 0, 59);
  } else if (is("BYSECOND")) {
    seconds_ = NumbersWithin(value, 0, 60);
  } else if (is("BYSETPOS")) {
    positions_ = NumbersWithin(value, -366, 366);
  } else if (!name.starts_with("X-") && !name.starts_with("x-")) {
    Refuse("A rule has the part " + std::string(name.substr(0, 20)) + ", which is not known here.");
  }
}

void Recurrence::ReadFrequency(std::string_view value) {
  const auto is = [value](std::string_view other) { return EqualsIgnoringAsciiCase(value, other); };
  if (is("HOURLY") || is("MINUTELY") || is("SECONDLY"))
    throw InvalidCalendarText(TextFault::kTooManyDays,
                              "Events that repeat every few hours, minutes or seconds cannot be kept here.");
  if (is("DAILY")) {
    unit_ = Unit::kDay;
  } else if (is("WEEKLY")) {
    unit_ = Unit::kWeek;
  } else if (is("MONTHLY")) {
    unit_ = Unit::kMonth;
  } else if (is("YEARLY")) {
    unit_ = Unit::kYear;
  } else {
    Refuse("A rule has an unknown FREQ.");
  }
}

void Recurrence::ReadUntil(std::string_view value) {
  const CivilValue until = ReadCivilValue(value);
  isUntilUtc_ = until.IsUtc;
  until_ = until.Time;
  if (until.IsDate) until_->Time = days{1} - TimeOfDay{1};
}

void Recurrence::ReadDaysOfWeek(std::string_view value) {
  for (const std::string_view item : ValueItems(value)) {
    if (daysOfWeek_.size() == kMostValues) Refuse("A rule has too many days of the week.");
    if (item.size() < 2) Refuse("A rule has an unknown day of the week.");
    const std::string_view number = item.substr(0, item.size() - 2);
    daysOfWeek_.push_back(
        {number.empty() ? 0 : NumberWithin(number, -53, 53), WeekdayOf(item.substr(item.size() - 2))});
  }
}

void Recurrence::Check() const {
  if (!unit_) Refuse("A rule has no FREQ.");
}

bool Recurrence::IsDay(Date date) const {
  if (!months_.empty() &&
      !Holds(months_, static_cast<int>(static_cast<unsigned>(year_month_day{date}.month()))))
    return false;
  return (monthDays_.empty() || IsMonthDay(date)) && (daysOfWeek_.empty() || IsDayOfWeek(date)) &&
         (yearDays_.empty() || IsYearDay(date)) && (weekNumbers_.empty() || IsInWeekNumber(date));
}

bool Recurrence::IsMonthDay(Date date) const {
  return HoldsEither(monthDays_, DayOfMonth(date), DayOfMonth(LastDayOfMonth(date)));
}

bool Recurrence::IsYearDay(Date date) const {
  return HoldsEither(yearDays_, YearDay(date), year_month_day{date}.year().is_leap() ? 366 : 365);
}

bool Recurrence::IsInWeekNumber(Date date) const {
  std::chrono::year year = year_month_day{date}.year();
  if (date >= FirstWeek(year + years{1}, weekStart_)) {
    ++year;
  } else if (date < FirstWeek(year, weekStart_)) {
    --year;
  }
  const Date first = FirstWeek(year, weekStart_);
  const int number = static_cast<int>((date - first).count()) / 7 + 1;
  return HoldsEither(weekNumbers_, number,
                     static_cast<int>((FirstWeek(year + years{1}, weekStart_) - first).count()) / 7);
}

bool Recurrence::IsDayOfWeek(Date date) const {
  const int weekday = Weekday(date);
  return std::ranges::any_of(daysOfWeek_, [&](const DayOfWeek& day) {
    return day.Weekday == weekday && (day.Number == 0 || IsNumberedDayOfWeek(date, day));
  });
}

bool Recurrence::IsNumberedDayOfWeek(Date date, const DayOfWeek& day) const {
  const bool isOfMonth = unit_ == Unit::kMonth || (unit_ == Unit::kYear && !months_.empty());
  if (!isOfMonth && unit_ != Unit::kYear) return true;
  const year_month_day parts{date};
  const int number = isOfMonth ? DayOfMonth(date) : YearDay(date);
  const int length = isOfMonth ? DayOfMonth(LastDayOfMonth(date)) : (parts.year().is_leap() ? 366 : 365);
  return day.Number > 0 ? (number - 1) / 7 + 1 == day.Number : (length - number) / 7 + 1 == -day.Number;
}

}  // namespace orlune
