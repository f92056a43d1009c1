#pragma once

#include <functional>
#include <span>
#include <string_view>

#include "html/html.h"
#include "model/calendar.h"

namespace orlune {

/// Adds a choice for each calendar: its value is the name, its label the display name, of a group in
/// brackets. `ending` follows each.
void AddCalendarOptions(Html& list, std::span<const Calendar> calendars,
                        const std::function<bool(std::string_view name)>& isSelected, Markup ending = "");

}  // namespace orlune
