#pragma once

#include "html/html.h"
#include "pages/calendar/view_content.h"
#include "request/page_context.h"

namespace orlune {

/// The current date as a timetable: a row for each hour of the user's day, timed occurrences side by side,
/// and those without a time in a column on the right.
void AddDayView(Html& page, const PageContext& context, const ViewContent& content);

}  // namespace orlune
