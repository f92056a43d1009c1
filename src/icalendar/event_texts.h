#pragma once

#include <string>
#include <vector>

#include "icalendar/content_lines.h"

namespace orlune {

// What a VEVENT says besides its times.

/// The title of an event in one line, at most 255 characters as rows keep them; "" without one.
std::string TitleOf(const Component& event);
/// The same, however long.
std::string WholeTitle(const Component& event);
/// Its description with the line breaks of forms, at most 64 KiB.
std::string CommentsOf(const Component& event);
/// Whether a row has no room for its title or description.
bool IsCut(const Component& event);
std::vector<std::string> CategoriesOf(const Component& event);
bool IsPrivate(const Component& event);
bool IsCancelled(const Component& event);

}  // namespace orlune
