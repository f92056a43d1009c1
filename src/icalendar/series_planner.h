#pragma once

#include <optional>
#include <vector>

#include "base/week.h"
#include "exchange/calendar_object.h"
#include "icalendar/event_times.h"

namespace orlune {

/// Days of a series are known up to so many before those to which it was worked out: a day of another zone
/// may be the next one here.
inline constexpr std::chrono::days kZoneMargin{2};

/// Some occurrences of one event, to become rows.
struct Series {
  const EventTimes* Times = nullptr;
  std::vector<Instance> Instances;  ///< in ascending order, those left out included
  bool Repeats = false;
  bool HasRule = false;    ///< rather than days that are listed one by one
  bool IsComplete = true;  ///< there are none after these
  Date KnownTo;            ///< otherwise all to this day are among them
  std::optional<Date>
      EndsOn{};  ///< the last day that its rule allows; without it an incomplete one never ends
};

struct SeriesRows {
  std::vector<ObjectEvent> Rows;  ///< `Place` counts from 0; only days and times are set
  bool ListsAhead = false;        ///< an endless series of which only the days known are listed
};

/// The rows of a series. `certainTo` is the day up to which a kind of repetition has to give the same days as
/// an endless series. Throws InvalidCalendarText.
SeriesRows PlanSeries(const Series& series, Date certainTo, const Zone& server, const Week& week);

}  // namespace orlune
