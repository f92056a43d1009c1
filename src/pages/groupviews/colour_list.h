#pragma once

#include <span>
#include <string>
#include <string_view>

#include "html/html.h"

namespace orlune {

struct PageContext;

enum class ColourKind { kBackground, kForeground };

/// A SELECT of a member's colour from the palette, or none. Its name is the calendar's, followed by "BG" or
/// "FG".
Html ColourList(const PageContext& context, std::string_view calendar, ColourKind kind,
                std::string_view colour);

/// A script that paints the cells of `calendars`, whose ids are the calendars' names, in the selected
/// colours. Leaves out names that a script cannot use as a variable for the element with that id.
Html PaintScript(std::span<const std::string> calendars);

}  // namespace orlune
