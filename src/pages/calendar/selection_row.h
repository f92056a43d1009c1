#pragma once

#include "html/html.h"
#include "pages/calendar/view_content.h"
#include "request/page_context.h"

namespace orlune {

/// The last row of every view, for selecting date, calendar and view. It spans `columnCount` columns.
Html SelectionRow(const PageContext& context, const ViewContent& content, int columnCount);

}  // namespace orlune
