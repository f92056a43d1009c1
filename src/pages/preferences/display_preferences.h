#pragma once

#include <optional>
#include <string>

#include "base/civil_time.h"
#include "platform/database.h"
#include "platform/page_host.h"

namespace orlune {

struct Visitor;

/// A user's display settings. Numbers are texts as posted by the form, unchecked.
struct DisplayPreferences {
  std::string StartMode = "month";  ///< "day", "week" or "month"
  std::string FirstDayOfWeek;       ///< 1 = Sunday ... 7 = Saturday
  std::string Weekend;              ///< weekday numbers joined with ", "
  std::string ClockMode;            ///< 12 or 24
  std::optional<TimeOfDay> DayBegin;
  std::optional<TimeOfDay> DayEnd;  ///< only the hour is stored, as of `DayBegin`
  std::string StyleSheet;           ///< the `SheetID` of the colour scheme
};

/// The stored preferences of the user; for Null columns, the values in effect for this request. Throws
/// DatabaseError.
DisplayPreferences LoadDisplayPreferences(Connection& database, const Visitor& visitor);
DisplayPreferences PostedDisplayPreferences(const Request& request);

/// Whether the day ends at least a minute after it begins; false when one of the times is missing.
bool HasHoursToShow(const DisplayPreferences& preferences);
/// Requires `HasHoursToShow`. Silently stores nothing when another value is not one that the form offers, or
/// when the update fails.
void StoreDisplayPreferences(Connection& database, const Visitor& visitor,
                             const DisplayPreferences& preferences);

}  // namespace orlune
