#pragma once

#include <optional>
#include <string>

#include "base/civil_time.h"
#include "platform/database.h"
#include "platform/page_host.h"

namespace orlune {

struct Visitor;

/// How one user wants calendars to be shown. Numbers are kept as the form posts them, which may be anything.
struct DisplayPreferences {
  std::string StartMode = "month";  ///< "day", "week" or "month"
  std::string FirstDayOfWeek;       ///< 1 = Sunday ... 7 = Saturday
  std::string Weekend;              ///< weekday numbers joined with ", "
  std::string ClockMode;            ///< 12 or 24
  std::optional<TimeOfDay> DayBegin;
  std::optional<TimeOfDay> DayEnd;  ///< stored by its hour, like `DayBegin`
  std::string StyleSheet;           ///< the `SheetID` of the colour scheme
};

/// What is stored for the user. What is not, is as this request shows it. Throws DatabaseError.
DisplayPreferences LoadDisplayPreferences(Connection& database, const Visitor& visitor);
/// What the preferences form posted.
DisplayPreferences PostedDisplayPreferences(const Request& request);

/// Whether the day ends at least a minute after it begins; false when one of them is no time.
bool HasHoursToShow(const DisplayPreferences& preferences);
/// Stores preferences that have hours to show. Stores nothing, and does not tell, when one of the others is
/// not a choice of the form or the update fails.
void StoreDisplayPreferences(Connection& database, const Visitor& visitor,
                             const DisplayPreferences& preferences);

}  // namespace orlune
