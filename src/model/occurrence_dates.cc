#include "model/occurrence_dates.h"

#include <algorithm>
#include <utility>

#include "model/occurrence_rule.h"

namespace orlune {

using std::chrono::year_month_day;
using std::chrono::years;

namespace {

/// The first day from `date` on in the month of `begin`: skips the eleven months in which a yearly event
/// cannot occur.
Date InMonthOf(Date begin, Date date) {
  const auto month = year_month_day{begin}.month();
  const year_month_day parts{date};
  if (parts.month() == month) return date;
  return parts.year() / month / 1 + years{parts.month() > month ? 1 : 0};
}

}  // namespace

std::vector<Date> OccurrenceDates(const OL_Event& event, const Week& week, std::size_t most,
                                  const EventDays& days) {
  const OccurrenceRule rule(event, days, week);
  const Date last = event.Type == Repetition::kNone ? event.BeginDate : event.EndDate;
  std::vector<Date> dates;
  for (Date date = event.BeginDate; date <= last && dates.size() < most; date += std::chrono::days{1}) {
    if (event.Type == Repetition::kYearly) date = InMonthOf(event.BeginDate, date);
    if (date > last) break;
    if (rule.OccursOn(date)) dates.push_back(date);
  }
  return dates;
}

EventDays RemainingDays(const OL_Event& event, const Week& week, EventDays days) {
  if (event.Type == Repetition::kNone) return {};
  EventDays ofKind;
  if (event.Type == Repetition::kListed) ofKind.Listed = std::move(days.Listed);
  const OccurrenceRule rule(event, ofKind, week);
  std::vector<Date> leftOut = std::move(days.LeftOut);
  std::erase_if(
      leftOut, [&](Date day) { return day < event.BeginDate || day > event.EndDate || !rule.OccursOn(day); });
  return {std::move(ofKind.Listed), std::move(leftOut)};
}

}  // namespace orlune
