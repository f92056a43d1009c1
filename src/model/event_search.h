#pragma once

#include <optional>
#include <string>

#include "base/civil_time.h"

namespace orlune {

/// What a search looks for.
struct EventSearch {
  std::string Text;       ///< looked for in titles and comments; "" finds every event
  std::string Calendar;   ///< a calendar's name, or "" for all that are visible
  std::string Kind;       ///< the text of a `Repetition`, or "" for any
  std::string StartDate;  ///< as typed
};

/// An event that a search found.
struct FoundEvent {
  int EventID = 0;
  std::string EventName;
  std::string Owner;
  std::string OwnerName;  ///< the display name of the owner
  bool Private = false;
  std::optional<TimeOfDay> BeginTime;
  std::optional<TimeOfDay> EndTime;
};

}  // namespace orlune
