#pragma once

#include <optional>

#include "base/week.h"
#include "model/event_days.h"
#include "model/ol_event.h"
#include "model/repetition_rule.h"

namespace orlune {

/// On which days an event occurs: those of its kind, without the ones that are left out. Does not check
/// whether a day lies between `BeginDate` and `EndDate`.
class OccurrenceRule {
 public:
  /// All of them must outlive the rule.
  OccurrenceRule(const OL_Event& event, const EventDays& days, const Week& week);

  bool OccursOn(Date date) const;

 private:
  bool IsDayOfKind(Date date) const;

  const EventDays* days_;
  bool isListed_;
  std::optional<RepetitionRule> rule_;  ///< nothing when every day is one
};

}  // namespace orlune
