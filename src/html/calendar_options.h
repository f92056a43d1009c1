#pragma once

#include <functional>
#include <span>
#include <string_view>

#include "html/html.h"
#include "model/calendar.h"

namespace orlune {

/// Appends an OPTION for each calendar: its value is the name, its label the display name, in brackets for a
/// group. `ending` is appended to each.
void AddCalendarOptions(Html& list, std::span<const Calendar> calendars,
                        const std::function<bool(std::string_view name)>& isSelected, Markup ending = "");

}  // namespace orlune
