#pragma once

#include <functional>
#include <span>
#include <string_view>

#include "html/html.h"
#include "model/calendar.h"
#include "platform/database.h"

namespace orlune {

/// Adds a choice for each calendar of `rows`, which selects Name, FriendlyName and IsGroup: its value is the
/// name, its label the display name, of a group in brackets. `ending` follows each. Throws DatabaseError.
void AddCalendarOptions(Html& list, ResultSet& rows,
                        const std::function<bool(std::string_view name)>& isSelected, Markup ending = "");

/// The same for a list of calendars.
void AddCalendarOptions(Html& list, std::span<const Calendar> calendars,
                        const std::function<bool(std::string_view name)>& isSelected, Markup ending = "");

}  // namespace orlune
