#pragma once

#include <optional>
#include <string>

#include "base/civil_time.h"

namespace orlune {

/// The criteria of a search.
struct EventSearch {
  std::string Text;       ///< substring of the title or the comments; "" matches every event
  std::string Calendar;   ///< a calendar's name; "" for all visible ones
  std::string Kind;       ///< the stored text of a `Repetition`; "" for any
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
