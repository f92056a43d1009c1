#pragma once

#include <span>
#include <vector>

#include "base/week.h"
#include "model/event_days.h"
#include "model/group_view.h"
#include "model/ol_event.h"

namespace orlune {

/// One day on which an event occurs.
struct Occurrence {
  const OL_Event* Event;  ///< never null; owned by the `OL_Events`
  Date OccurrenceDate;
  std::size_t Member;  ///< place of its calendar in the viewed group view; `npos` when it is not in it
};

/// The occurrences in one period. Owns the events; the occurrences point to them.
class OL_Events {
 public:
  OL_Events() = default;
  OL_Events(OL_Events&&) = default;
  OL_Events& operator=(OL_Events&&) = default;
  OL_Events(const OL_Events&) = delete;
  OL_Events& operator=(const OL_Events&) = delete;
  ~OL_Events() = default;

  /// Replaces the occurrences by those of `events` from `first` to `last`, both inclusive. `group` has the
  /// members of the viewed group view, `days` those of the period.
  void GetEventsForPeriod(std::vector<OL_Event> events, const GroupViewMembers& group, const Week& week,
                          Date first, Date last, const DaysOfEvents& days = {});
  /// The occurrences of one day, in the order of the events; empty for a day outside the period.
  std::span<const Occurrence> GetEventsForDay(Date date) const;

 private:
  void AddOccurrences(const OL_Event& event, const EventDays& days, std::size_t member, const Week& week,
                      Date last);

  std::vector<OL_Event> events_;
  Date first_;
  std::vector<std::vector<Occurrence>> days_;  ///< from `first_` on
};

}  // namespace orlune
