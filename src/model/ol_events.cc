#include "model/ol_events.h"

#include <algorithm>

#include "model/occurrence_rule.h"

namespace orlune {

void OL_Events::GetEventsForPeriod(std::vector<OL_Event> events, const GroupViewMembers& group,
                                   const Week& week, Date first, Date last, const DaysOfEvents& days) {
  events_ = std::move(events);
  first_ = first;
  days_.clear();
  days_.resize(static_cast<std::size_t>((last - first).count() + 1));
  const MemberPlaces members(group);
  const EventDays none;
  for (const OL_Event& event : events_) {
    const auto found = days.find(event.EventID);
    AddOccurrences(event, found == days.end() ? none : found->second, members.PlaceOf(event.Owner), week,
                   last);
  }
}

void OL_Events::AddOccurrences(const OL_Event& event, const EventDays& days, std::size_t member,
                               const Week& week, Date last) {
  const OccurrenceRule rule(event, days, week);
  const Date end = std::min(last, event.Type == Repetition::kNone ? event.BeginDate : event.EndDate);
  for (Date day = std::max(event.BeginDate, first_); day <= end; day += std::chrono::days{1}) {
    if (!rule.OccursOn(day)) continue;
    days_[static_cast<std::size_t>((day - first_).count())].push_back({&event, day, member});
  }
}

std::span<const Occurrence> OL_Events::GetEventsForDay(Date date) const {
  const auto place = (date - first_).count();
  if (place < 0 || static_cast<std::size_t>(place) >= days_.size()) return {};
  return days_[static_cast<std::size_t>(place)];
}

}  // namespace orlune
