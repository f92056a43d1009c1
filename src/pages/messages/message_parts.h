#pragma once

#include <optional>
#include <string>

#include "base/civil_time.h"
#include "html/html.h"

namespace orlune {

struct PageContext;

/// The short date and the time in the user's time format; "" for nothing.
std::string SentDateText(const PageContext& context, std::optional<DateTime> sent);

/// The toolbar of a page with one message: the buttons for the calendar and for the list.
Html MessageToolbar(const PageContext& context);

}  // namespace orlune
