#pragma once

#include <optional>
#include <string>

#include "base/civil_time.h"
#include "html/html.h"

namespace orlune {

struct PageContext;
struct Visit;

/// When a message was sent, as its reader is shown it: the short date and the time by the user's clock; ""
/// for nothing.
std::string SentDateText(const PageContext& context, std::optional<DateTime> sent);

/// The tool bar of a page with one message: back to the calendar, and the list.
Html MessageToolbar(const PageContext& context);

/// Answers a request for a message that is gone or, on a strict hosting page, not the user's: as without the
/// right. Throws DatabaseError when the page is not strict.
void RefuseMissingMessage(Visit& visit);

}  // namespace orlune
