#include "icalendar/row_rule.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "base/dates.h"
#include "base/lists.h"
#include "base/text.h"
#include "exchange/calendar_text.h"
#include "model/occurrence_dates.h"
#include "model/repetition_rule.h"

namespace orlune {

using std::chrono::days;
using std::chrono::year_month_day;

namespace {

constexpr int kShortestMonth = 28;
constexpr int kLast = 31;  // of the month; shorter ones give their last day
constexpr std::array<std::string_view, 8> kWeekdays{"", "SU", "MO", "TU", "WE", "TH", "FR", "SA"};

void AppendItem(std::string& list, std::string_view item) {
  if (!list.empty()) list += ',';
  list += item;
}

/// The numbers from `first` to `last`; from -1 down when `last` is less.
std::string Numbers(int first, int last) {
  std::string list;
  const int step = last < first ? -1 : 1;
  for (int number = first; number != last + step; number += step) AppendItem(list, std::to_string(number));
  return list;
}

/// The working days of a week, and the longest run of days off.
struct WorkingDays {
  std::string List{};
  int Count = 0;
  int LongestRun = 0;
};

WorkingDays WorkingDaysOf(const Week& week) {
  constexpr Date kSunday = std::chrono::year{2023} / 1 / 1;
  WorkingDays working;
  int run = 0;
  for (int i = 0; i < 14; ++i) {
    const bool isFree = week.IsWeekend(kSunday + days{i});
    run = isFree ? run + 1 : 0;
    working.LongestRun = std::max(working.LongestRun, run);
    if (isFree || i >= 7) continue;
    AppendItem(working.List, kWeekdays[static_cast<std::size_t>(i) + 1]);
    ++working.Count;
  }
  return working;
}

std::string WeekdayItems(const OL_Event& event, std::string_view number) {
  std::array<bool, 8> isChosen{};
  ForEachItem(event.RepeatWeekday, [&](std::string_view item) {
    if (item.size() == 1 && item[0] >= '1' && item[0] <= '7')
      isChosen[static_cast<std::size_t>(item[0] - '0')] = true;
  });
  std::string list;
  for (std::size_t i = 1; i <= 7; ++i) {
    if (isChosen[i]) AppendItem(list, std::string(number).append(kWeekdays[i]));
  }
  return list;
}

std::string WeekdayRule(const OL_Event& event) {
  const auto frequency = static_cast<int>(*event.RepeatFrequency);
  const auto firstInMonth = static_cast<int>(Frequency::kFirstInMonth);
  if (frequency >= firstInMonth)
    return "FREQ=MONTHLY;BYDAY=" + WeekdayItems(event, std::to_string(frequency - firstInMonth + 1));
  std::string rule = "FREQ=WEEKLY";
  if (frequency > 0) rule += ";INTERVAL=" + std::to_string(frequency + 1);
  // Weeks count from the first day, which need not be a day of the event.
  rule += ";WKST=" + std::string(kWeekdays[static_cast<std::size_t>(WeekdayNumber(event.BeginDate))]);
  return rule + ";BYDAY=" + WeekdayItems(event, "");
}

/// The days of the month of a monthly event, in ascending order, the last one as `kLast`.
std::vector<int> MonthDays(const OL_Event& event) {
  std::vector<int> numbers;
  ForEachItem(event.RepeatDay, [&](std::string_view item) {
    if (const auto number = WholeNumber(item))
      numbers.push_back(*number < 1 ? kLast : std::min(*number, kLast));
  });
  std::ranges::sort(numbers);
  numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
  return numbers;
}

/// Days that nothing moves. "" when no rule says them.
std::string FixedDays(const std::vector<int>& numbers, int length) {
  if (numbers.size() == 1 && numbers[0] <= length) return "BYMONTHDAY=" + Numbers(numbers[0], numbers[0]);
  if (numbers.size() == 1 && numbers[0] != kLast)
    return "BYMONTHDAY=" + Numbers(kShortestMonth, numbers[0]) + ";BYSETPOS=-1";
  std::string list;
  for (const int number : numbers) {
    if (number > kShortestMonth && number < kLast) return "";
    AppendItem(list, number == kLast ? "-1" : std::to_string(number));
  }
  // In February the 28th may be the last day, too.
  const bool mayCoincide = numbers.size() > 1 && numbers.back() == kLast && numbers[numbers.size() - 2] == 28;
  return mayCoincide ? "" : "BYMONTHDAY=" + list;
}

/// Working days only.
std::string KeptDays(const std::vector<int>& numbers, const WorkingDays& working, int length) {
  const std::string fixed = FixedDays(numbers, length);
  if (fixed.empty() || fixed.find("BYSETPOS") != std::string::npos) return "";
  return fixed + ";BYDAY=" + working.List;
}

/// A day that moves to the next or previous working day without leaving its month.
std::string MovedDay(int number, bool isForward, const WorkingDays& working, int length) {
  const int run = working.LongestRun;
  std::string numbers;
  if (isForward && number + run <= kShortestMonth) {
    numbers = Numbers(number, number + run);
  } else if (!isForward && number <= length && number - run >= 1) {
    numbers = Numbers(number - run, number);
  } else if (!isForward && number == kLast) {
    numbers = Numbers(-1, -1 - run);
  } else {
    return "";
  }
  return "BYMONTHDAY=" + numbers + ";BYDAY=" + working.List + ";BYSETPOS=" + (isForward ? "1" : "-1");
}

/// Of months that have `length` days or more.
std::string DaysOfMonth(const std::vector<int>& numbers, WeekendRule weekends, const Week& week, int length) {
  if (numbers.empty()) return "";
  const WorkingDays working = WorkingDaysOf(week);
  if (weekends == WeekendRule::kKeep || working.Count == 7) return FixedDays(numbers, length);
  if (working.Count == 0) return "";
  if (weekends == WeekendRule::kSkip) return KeptDays(numbers, working, length);
  return numbers.size() == 1 ? MovedDay(numbers[0], weekends == WeekendRule::kMoveForward, working, length)
                             : "";
}

std::string YearlyRule(const OL_Event& event, const Week& week) {
  const int number = DayOfMonth(event.BeginDate);
  const unsigned month = static_cast<unsigned>(year_month_day{event.BeginDate}.month());
  std::string daysOfMonth;
  if (month != 2 || number <= kShortestMonth) {
    daysOfMonth =
        DaysOfMonth({number}, event.RepeatWeekends, week, DayOfMonth(LastDayOfMonth(event.BeginDate)));
  } else if (event.RepeatWeekends == WeekendRule::kKeep) {
    daysOfMonth = "BYMONTHDAY=-1";
  }
  return daysOfMonth.empty() ? "" : "FREQ=YEARLY;BYMONTH=" + std::to_string(month) + ";" + daysOfMonth;
}

/// "" when no rule says the days.
std::string RuleText(const OL_Event& event, const Week& week) {
  switch (event.Type) {
    case Repetition::kDaily:
      return "FREQ=DAILY";
    case Repetition::kByWeekday:
      return WeekdayRule(event);
    case Repetition::kMonthly: {
      const std::string daysOfMonth =
          DaysOfMonth(MonthDays(event), event.RepeatWeekends, week, kShortestMonth);
      return daysOfMonth.empty() ? "" : "FREQ=MONTHLY;" + daysOfMonth;
    }
    case Repetition::kYearly:
      return YearlyRule(event, week);
    default:
      return "";
  }
}

std::optional<RowRule> RuleOfDays(const std::vector<Date>& dates) {
  if (dates.empty()) return std::nullopt;
  return RowRule{dates.front(), dates.front(), "", std::nullopt, {dates.begin() + 1, dates.end()}, {}};
}

/// Whether it is one all-day event from its first to its last day.
bool IsSpan(const ObjectEvent& row) {
  const OL_Event& event = row.Event;
  return event.Type == Repetition::kDaily && !event.BeginTime && row.Days.LeftOut.empty() &&
         event.EndDate < kFarEnd;
}

bool IsOneDay(const ObjectEvent& row) {
  const OL_Event& event = row.Event;
  return event.Type == Repetition::kNone ||
         (event.Type == Repetition::kDaily && event.EndDate == event.BeginDate);
}

}  // namespace

std::vector<Date> DaysOf(const ObjectEvent& row, const Week& week) {
  if (row.Event.Type == Repetition::kListed) return row.Days.Listed;
  if (row.Event.Type == Repetition::kUnknown) return {};
  const std::vector<Date> dates = OccurrenceDates(row.Event, week, kMostDaysOfObject);
  std::vector<Date> left;
  std::ranges::set_difference(dates, row.Days.LeftOut, std::back_inserter(left));
  return left;
}

std::optional<RowRule> RuleOf(const ObjectEvent& row, const Week& week) {
  const OL_Event& event = row.Event;
  if (IsOneDay(row)) return RuleOfDays(DaysOf(row, week));
  if (IsSpan(row)) {
    if (event.EndDate < event.BeginDate) return std::nullopt;
    return RowRule{event.BeginDate, event.EndDate};
  }
  std::string rule = RuleText(event, week);
  if (rule.empty()) return RuleOfDays(DaysOf(row, week));
  const std::vector<Date> first = OccurrenceDates(event, week, row.Days.LeftOut.size() + 1);
  if (first.empty() || std::ranges::includes(row.Days.LeftOut, first)) return std::nullopt;
  RowRule said{first.front(), first.front(), std::move(rule), std::nullopt, {}, {}};
  if (event.EndDate < kFarEnd) said.Until = event.EndDate;
  const RepetitionRule occurs(event, week);
  for (const Date day : row.Days.LeftOut) {
    const bool isWithin = day >= event.BeginDate && day <= event.EndDate;
    if (isWithin && (event.Type == Repetition::kDaily || occurs.OccursOn(day))) said.LeftOut.push_back(day);
  }
  return said;
}

}  // namespace orlune
