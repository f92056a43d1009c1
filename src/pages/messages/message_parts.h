#pragma once

#include <optional>
#include <string>

#include "base/civil_time.h"
#include "html/html.h"

namespace orlune {

struct PageContext;
struct Visit;

/// The short date and the time in the user's time format; "" for nothing.
std::string SentDateText(const PageContext& context, std::optional<DateTime> sent);

/// The toolbar of a page with one message: the buttons for the calendar and for the list.
Html MessageToolbar(const PageContext& context);

/// Answers a request for a message that is gone or, on a strict hosting page, not the user's, with the page
/// for a missing right: which of the two it is, nobody is told.
void RefuseMissingMessage(Visit& visit);

}  // namespace orlune
