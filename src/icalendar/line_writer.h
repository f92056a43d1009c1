#pragma once

#include <string>
#include <string_view>

#include "base/civil_time.h"
#include "icalendar/content_lines.h"

namespace orlune {

/// Appends a content line, folded after 75 bytes between characters (RFC 5545, section 3.1), with its line
/// break.
void AppendLine(std::string& text, std::string_view line);
void AppendLine(std::string& text, std::string_view nameWithColon, std::string_view value);

/// A component with all that is in it.
void AppendComponent(std::string& text, const Component& component);

/// A TEXT value with its escapes; line breaks of any kind become "\n", other control characters are left out.
std::string EscapedText(std::string_view plain);

/// "20261124"
std::string DateText(Date date);
/// "20261124T183000"
std::string DateTimeText(const DateTime& time);
/// "20261124T163000Z"
std::string UtcText(std::chrono::sys_seconds moment);

}  // namespace orlune
