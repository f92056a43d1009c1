#include <algorithm>

#include "exchange/shared_objects.h"
#include "model/occurrence_rule.h"

namespace orlune {
namespace {

using std::chrono::days;

constexpr Date kLastDay = std::chrono::year{9998} / 12 / 31;

/// The period's days in the server's zone, and one more at each end for events that reach into it.
struct DayRange {
  Date First;
  Date Last;
};

DayRange DaysOf(const UtcPeriod& period, const CalendarText& texts) {
  return {texts.LocalTime(period.Begin).Day - days{1},
          period.End ? texts.LocalTime(*period.End).Day + days{1} : kLastDay};
}

BusyPeriod SpanOn(Date day, const OL_Event& event, const CalendarText& texts) {
  const DateTime begin{day, event.BeginTime.value_or(TimeOfDay{})};
  DateTime end = event.BeginTime ? begin : DateTime{day + days{1}, {}};
  if (event.BeginTime && event.EndTime && *event.EndTime > *event.BeginTime) end.Time = *event.EndTime;
  return {texts.Moment(begin), texts.Moment(end), event.SuggestState == SuggestionState::kUndecided,
          event.SuggestState == SuggestionState::kDeclined};
}

/// RFC 4791, section 9.9: an event without duration touches the period that it begins in.
bool Touches(const BusyPeriod& span, const UtcPeriod& period) {
  const bool isBeforeEnd = !period.End || span.Begin < *period.End;
  const bool isAfterBegin = span.Begin == span.End ? span.Begin >= period.Begin : span.End > period.Begin;
  return isBeforeEnd && isAfterBegin;
}

/// Calls `visit` with each day on which the row occurs until it returns false.
template <class Visit>
void ForEachDay(const ObjectEvent& row, const Week& week, const DayRange& range, Visit visit) {
  const OL_Event& event = row.Event;
  const OccurrenceRule rule(event, row.Days, week);
  const Date last = std::min(range.Last, event.Type == Repetition::kNone ? event.BeginDate : event.EndDate);
  for (Date day = std::max(event.BeginDate, range.First); day <= last; day += days{1}) {
    if (rule.OccursOn(day) && !visit(day)) return;
  }
}

}  // namespace

std::vector<BusyPeriod> SpansIn(const SharedObject& object, const CalendarText& texts,
                                const UtcPeriod& period, std::size_t most) {
  const DayRange range = DaysOf(period, texts);
  std::vector<BusyPeriod> spans;
  for (const ObjectEvent& row : object.Object.Events) {
    std::size_t left = most;
    ForEachDay(row, object.Week, range, [&](Date day) {
      const BusyPeriod span = SpanOn(day, row.Event, texts);
      if (!Touches(span, period)) return true;
      spans.push_back(span);
      return --left > 0;
    });
  }
  std::ranges::sort(spans, {}, &BusyPeriod::Begin);
  return spans;
}

}  // namespace orlune
