#pragma once

#include <optional>
#include <string>

#include "base/civil_time.h"
#include "model/repetition.h"
#include "model/suggestion.h"

namespace orlune {

/// One row of `Events`. Null columns are empty.
struct OL_Event {
  int EventID = 0;  ///< 0 until the event is stored
  std::string EventName;
  std::string Owner;  ///< name of the calendar that holds the event
  Repetition Type = Repetition::kNone;
  Date BeginDate;
  Date EndDate;  ///< last day on which a repeating event may occur
  std::optional<TimeOfDay> BeginTime;
  std::optional<TimeOfDay> EndTime;
  std::string RepeatWeekday;  ///< weekday numbers, 1 = Sunday, joined with ", "
  std::optional<Frequency> RepeatFrequency;
  std::string RepeatDay;  ///< days of the month, joined with ", "
  WeekendRule RepeatWeekends = WeekendRule::kKeep;
  bool Private = false;
  std::string Comments;
  std::string EventType;
  std::string SuggID;  ///< on a recipient's copy of a suggestion, the `EventID` of the sender's
  SuggestionState SuggestState = SuggestionState::kNotSuggested;

  /// Whether calendars show it: the sender's copy of a suggestion is shown, a recipient's only once accepted.
  bool IsShown() const {
    return SuggestState != SuggestionState::kUndecided && SuggestState != SuggestionState::kDeclined;
  }
};

}  // namespace orlune
