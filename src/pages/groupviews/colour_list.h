#pragma once

#include <span>
#include <string>
#include <string_view>

#include "html/html.h"

namespace orlune {

struct PageContext;

enum class ColourKind { kBackground, kForeground };

/// The choice of a member's colour from the palette, or of none: its field is the calendar's name followed by
/// "BG" or "FG".
Html ColourList(const PageContext& context, std::string_view calendar, ColourKind kind,
                std::string_view colour);

/// Paints the cells of `calendars`, which have their names as ids, in the colours that are chosen for them.
/// Leaves out those that a script cannot address by their mere name.
Html PaintScript(std::span<const std::string> calendars);

}  // namespace orlune
