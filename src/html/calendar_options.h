#pragma once

#include <functional>
#include <string_view>

#include "html/html.h"
#include "platform/database.h"

namespace orlune {

/// Adds a choice for each calendar of `rows`, which selects Name, FriendlyName and IsGroup: its value is the
/// name, its label the display name, of a group in brackets. `ending` follows each. Throws DatabaseError.
void AddCalendarOptions(Html& list, ResultSet& rows,
                        const std::function<bool(std::string_view name)>& isSelected, Markup ending = "");

}  // namespace orlune
