#pragma once

#include <optional>
#include <string_view>

#include "platform/database.h"

namespace orlune {

// The value of a field as one type; nothing for Null and for a value of another type.

/// The text, or "". Valid until the result set moves on.
std::string_view TextOf(const Value& value);
std::optional<int> NumberOf(const Value& value);
/// Null reads as no.
bool YesNoOf(const Value& value);
std::optional<Date> DateOf(const Value& value);
std::optional<TimeOfDay> TimeOf(const Value& value);
std::optional<DateTime> DateTimeOf(const Value& value);
bool IsNull(const Value& value);

}  // namespace orlune
