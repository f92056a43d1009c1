#include "model/occurrence_dates.h"

#include "model/repetition_rule.h"

namespace orlune {

using std::chrono::days;
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

std::vector<Date> OccurrenceDates(const OL_Event& event, const Week& week, std::size_t most) {
  if (event.Type == Repetition::kNone) return {event.BeginDate};

  const RepetitionRule rule(event, week);
  std::vector<Date> dates;
  for (Date date = event.BeginDate; date <= event.EndDate && dates.size() < most; date += days{1}) {
    if (event.Type == Repetition::kYearly) date = InMonthOf(event.BeginDate, date);
    if (date > event.EndDate) break;
    if (event.Type == Repetition::kDaily || rule.OccursOn(date)) dates.push_back(date);
  }
  return dates;
}

}  // namespace orlune
