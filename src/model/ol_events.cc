#include "model/ol_events.h"

#include <algorithm>
#include <optional>

#include "model/repetition_rule.h"

namespace orlune {

using std::chrono::days;

void OL_Events::GetEventsForPeriod(std::vector<OL_Event> events, const GroupViewMembers& group,
                                   const Week& week, Date first, Date last) {
  events_ = std::move(events);
  first_ = first;
  days_.clear();
  days_.resize(static_cast<std::size_t>((last - first).count() + 1));
  const MemberPlaces members(group);
  for (const OL_Event& event : events_) AddOccurrences(event, members.PlaceOf(event.Owner), week, last);
}

void OL_Events::AddOccurrences(const OL_Event& event, std::size_t member, const Week& week, Date last) {
  const bool isSingle = event.Type == Repetition::kNone;
  std::optional<RepetitionRule> rule;
  if (!isSingle && event.Type != Repetition::kDaily) rule.emplace(event, week);

  const Date end = std::min(last, isSingle ? event.BeginDate : event.EndDate);
  for (Date day = std::max(event.BeginDate, first_); day <= end; day += days{1}) {
    if (rule && !rule->OccursOn(day)) continue;
    days_[static_cast<std::size_t>((day - first_).count())].push_back({&event, day, member});
  }
}

std::span<const Occurrence> OL_Events::GetEventsForDay(Date date) const {
  const auto place = (date - first_).count();
  if (place < 0 || static_cast<std::size_t>(place) >= days_.size()) return {};
  return days_[static_cast<std::size_t>(place)];
}

}  // namespace orlune
