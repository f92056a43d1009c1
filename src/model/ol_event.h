#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/civil_time.h"

namespace orlune {

/// One row of `Events`. What the row leaves Null reads as empty.
struct OL_Event {
  int EventID = 0;  ///< 0 for an event that is not stored yet
  std::string EventName;
  std::string Owner;  ///< name of the calendar that holds the event
  std::string Type;   ///< "none", "day", "weekday", "month" or "year"
  Date BeginDate;
  Date EndDate;  ///< last day on which a repeating event may occur
  std::optional<TimeOfDay> BeginTime;
  std::optional<TimeOfDay> EndTime;
  std::string RepeatWeekday;    ///< weekday numbers, 1 = Sunday, joined with ", "
  std::string RepeatFrequency;  ///< "vko_1" to "vko_3": every so many weeks; "kk_1" to "kk_4": so manieth in
                                ///< the month
  std::string RepeatDay;        ///< days of the month, joined with ", "
  std::string RepeatWeekends;   ///< "vkl_ok", "vkl_no", "vkl_ma" (move forward) or "vkl_pe" (move back)
  bool Private = false;
  std::string Comments;
  std::string EventType;
  std::string SuggID;        ///< on a recipient's copy of a suggestion, the `EventID` of the sender's
  std::string SuggestState;  ///< "", "-" (the sender's copy), "undecided", "accepted" or "declined"

  /// Whether a calendar shows it: a suggestion is shown to its sender, and to others once they accepted it.
  bool IsShown() const { return SuggestState.empty() || SuggestState == "accepted" || SuggestState == "-"; }
};

}  // namespace orlune
