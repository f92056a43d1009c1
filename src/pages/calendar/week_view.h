#pragma once

#include "html/html.h"
#include "pages/calendar/view_content.h"
#include "request/page_context.h"

namespace orlune {

/// The week that holds the current date: one row of seven tall cells with the occurrences of their days.
///
void AddWeekView(Html& page, const PageContext& context, const ViewContent& content);

}  // namespace orlune
