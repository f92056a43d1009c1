#pragma once

#include <string_view>

#include "html/html.h"
#include "request/page_context.h"

namespace orlune {

struct Visit;

/// The beginning of a page up to its BODY tag. An empty `title` or `onLoad` (a script) is omitted.
Html PageHead(const PageContext& context, std::string_view title, const Html& onLoad = {});
Html PageFoot(const PageContext& context);
/// A script that shows the alerts of a request in one box; empty when there are none. Belongs after the page
/// foot.
Html AlertScript(std::string_view alerts);

/// Opens the frame around a page's content: a row with the caption on the left and buttons on the right, then
/// the cell for the content, which is left open. `width` is in per cent; empty for none.
Html TitleBarOpen(Markup width, const Html& caption, const Html& rightContent);
/// Closes the content's cell, adds the row with the product and session links, and closes the frame.
Html TitleBarClose(const PageContext& context);
Html TableClose();

/// A complete page with an error message.
Html ErrorPage(const PageContext& context, std::string_view message);

/// Writes `page` as the response.
void WritePage(Visit& visit, Html page);

/// Closes the frame and the form of a page, and writes it.
void FinishFormPage(Visit& visit, Html page);

}  // namespace orlune
