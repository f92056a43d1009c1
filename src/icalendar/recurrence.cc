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

Recurrence Recurrence::WithDefaults(const DateTime& begin) const {
  Recurrence rule = *this;
  const year_month_day first{begin.Day};
  const std::chrono::hh_mm_ss time{begin.Time};
  if (rule.hours_.empty()) rule.hours_ = {static_cast<int>(time.hours().count())};
  if (rule.minutes_.empty()) rule.minutes_ = {static_cast<int>(time.minutes().count())};
  if (rule.seconds_.empty()) rule.seconds_ = {static_cast<int>(time.seconds().count())};
  const int monthDay = static_cast<int>(static_cast<unsigned>(first.day()));
  const bool hasNoDay = daysOfWeek_.empty() && monthDays_.empty();
  if (unit_ == Unit::kWeek && daysOfWeek_.empty()) rule.daysOfWeek_ = {{0, Weekday(begin.Day)}};
  if (unit_ == Unit::kMonth && hasNoDay && yearDays_.empty()) rule.monthDays_ = {monthDay};
  if (unit_ == Unit::kYear && hasNoDay && yearDays_.empty()) {
    if (!weekNumbers_.empty()) {
      rule.daysOfWeek_ = {{0, Weekday(begin.Day)}};
    } else {
      rule.monthDays_ = {monthDay};
      if (months_.empty()) rule.months_ = {static_cast<int>(static_cast<unsigned>(first.month()))};
    }
  }
  return rule;
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

Date Recurrence::PeriodStart(Date date) const {
  const year_month_day parts{date};
  switch (*unit_) {
    case Unit::kDay:
      return date;
    case Unit::kWeek:
      return date - days{(Weekday(date) - weekStart_ + 7) % 7};
    case Unit::kMonth:
      return Date{parts.year() / parts.month() / 1};
    case Unit::kYear:
      return Date{parts.year() / 1 / 1};
  }
  return date;
}

std::vector<TimeOfDay> Recurrence::TimesOfDay() const {
  std::vector<TimeOfDay> times;
  for (const int hour : hours_) {
    for (const int minute : minutes_) {
      for (const int second : seconds_)
        times.push_back(std::chrono::hours{hour} + std::chrono::minutes{minute} +
                        std::chrono::seconds{std::min(second, 59)});
    }
  }
  return times;
}

/// Goes through the periods of a rule in order.
class Recurrence::Walk {
 public:
  Walk(const Recurrence& rule, const DateTime& begin, Date last, std::size_t most, WorkBudget& budget)
      : rule_(rule.WithDefaults(begin)),
        begin_(begin),
        last_(rule.until_ ? std::min(last, rule.until_->Day) : last),
        most_(most),
        budget_(budget),
        times_(rule_.TimesOfDay()),
        start_(rule_.PeriodStart(begin.Day)) {}

  Days Run() {
    const bool endsBefore = rule_.until_ && rule_.until_->Day <= last_;
    bool goesOn = true;
    while (goesOn && start_ <= last_) {
      const Date next = Next();
      goesOn = AddPeriod(std::min(next - days{1}, AfterPeriod() - days{1}));
      start_ = next;
    }
    // What ends the rule has been reached, rather than what the caller wants to know.
    found_.IsComplete = isAtCount_ || (goesOn && endsBefore);
    return std::move(found_);
  }

 private:
  Date AfterPeriod() const { return After(1); }
  Date Next() const { return After(rule_.interval_); }
  Date After(int count) const {
    const year_month_day parts{start_};
    switch (*rule_.unit_) {
      case Unit::kDay:
        return start_ + days{count};
      case Unit::kWeek:
        return start_ + days{7 * count};
      case Unit::kMonth:
        return Date{parts + months{count}};
      case Unit::kYear:
        return Date{parts + years{count}};
    }
    return start_;
  }

  /// False when there are enough.
  bool AddPeriod(Date end) {
    periodDays_.clear();
    const bool needsAll = !rule_.positions_.empty();
    const Date first = needsAll ? start_ : std::max(start_, begin_.Day);
    const Date final = needsAll ? end : std::min(end, last_);
    if (first <= final) budget_.Spend(static_cast<std::size_t>((final - first).count()) + 1);
    for (Date date = first; date <= final; date += days{1}) {
      if (rule_.IsDay(date)) periodDays_.push_back(date);
    }
    return needsAll ? AddPositions() : AddAll();
  }

  bool AddAll() {
    for (const Date day : periodDays_) {
      for (const TimeOfDay time : times_) {
        if (!Add({day, time})) return false;
      }
    }
    return true;
  }

  bool AddPositions() {
    const auto size = static_cast<long>(periodDays_.size() * times_.size());
    std::vector<long> indexes;
    for (const int position : rule_.positions_) {
      const long index = position > 0 ? position - 1 : size + position;
      if (index >= 0 && index < size) indexes.push_back(index);
    }
    std::ranges::sort(indexes);
    indexes.erase(std::unique(indexes.begin(), indexes.end()), indexes.end());
    for (const long index : indexes) {
      const auto place = static_cast<std::size_t>(index);
      if (!Add({periodDays_[place / times_.size()], times_[place % times_.size()]})) return false;
    }
    return true;
  }

  bool Add(const DateTime& time) {
    if (Before(time, begin_)) return true;
    if (rule_.until_ && Before(*rule_.until_, time)) return true;
    if (time.Day > last_) return false;
    if (found_.Times.size() == most_) return false;
    budget_.Spend(1);
    found_.Times.push_back(time);
    isAtCount_ = rule_.count_ && found_.Times.size() == *rule_.count_;
    return !isAtCount_;
  }

  static bool Before(const DateTime& a, const DateTime& b) {
    return a.Day != b.Day ? a.Day < b.Day : a.Time < b.Time;
  }

  const Recurrence rule_;
  const DateTime begin_;
  const Date last_;
  const std::size_t most_;
  WorkBudget& budget_;
  const std::vector<TimeOfDay> times_;
  Date start_;
  std::vector<Date> periodDays_;
  Days found_;
  bool isAtCount_ = false;
};

Recurrence::Days Recurrence::Expand(const DateTime& begin, Date last, std::size_t most,
                                    WorkBudget& budget) const {
  return Walk(*this, begin, last, most, budget).Run();
}

}  // namespace orlune
