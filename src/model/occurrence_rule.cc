#include "model/occurrence_rule.h"

#include <algorithm>

namespace orlune {

OccurrenceRule::OccurrenceRule(const OL_Event& event, const EventDays& days, const Week& week)
    : days_(&days), isListed_(event.Type == Repetition::kListed) {
  const bool isEveryDay = event.Type == Repetition::kNone || event.Type == Repetition::kDaily;
  if (!isEveryDay && !isListed_) rule_.emplace(event, week);
}

bool OccurrenceRule::OccursOn(Date date) const {
  return IsDayOfKind(date) && !std::ranges::binary_search(days_->LeftOut, date);
}

bool OccurrenceRule::IsDayOfKind(Date date) const {
  if (isListed_) return std::ranges::binary_search(days_->Listed, date);
  return !rule_ || rule_->OccursOn(date);
}

}  // namespace orlune
