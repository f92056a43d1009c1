#pragma once

#include <optional>
#include <string>

#include "base/civil_time.h"
#include "html/html.h"

namespace orlune {

struct PageContext;

/// When a message was sent, as its reader is shown it: the short date and the time by the user's clock; ""
/// for nothing.
std::string SentDateText(const PageContext& context, std::optional<DateTime> sent);

/// The tool bar of a page with one message: back to the calendar, and the list.
Html MessageToolbar(const PageContext& context);

}  // namespace orlune
