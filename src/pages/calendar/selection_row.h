#pragma once

#include "html/html.h"
#include "pages/calendar/view_content.h"
#include "request/page_context.h"

namespace orlune {

/// Adds the last row of every view, for selecting date, calendar and view. It spans `columnCount` columns.
void AddSelectionRow(Html& page, const PageContext& context, const ViewContent& content, int columnCount);

}  // namespace orlune
