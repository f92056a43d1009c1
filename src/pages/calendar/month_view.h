#pragma once

#include "html/html.h"
#include "pages/calendar/view_content.h"
#include "request/page_context.h"

namespace orlune {

/// The month of the current date: a row for each week, beginning with a link to it, and a cell for each day
/// with its occurrences.
void AddMonthView(Html& page, const PageContext& context, const ViewContent& content);

}  // namespace orlune
