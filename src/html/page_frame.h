#pragma once

#include <string_view>

#include "html/html.h"
#include "request/page_context.h"

namespace orlune {

struct Visit;

/// A page's beginning up to its BODY tag. An empty `title` writes none; `onLoad` is a script, written unless
/// empty.
Html PageHead(const PageContext& context, std::string_view title, const Html& onLoad = {});
Html PageFoot(const PageContext& context);
/// Shows the error texts of a request as one alert box; nothing when there are none. Stands after the page
/// foot.
Html AlertScript(std::string_view alerts);

/// The frame around a page's content: a row with the caption on the left and buttons on the right, then the
/// cell for the content, which stays open. `width` is in per cent; an empty one leaves it to the browser.
Html TitleBarOpen(Markup width, const Html& caption, const Html& rightContent);
/// Closes the content's cell and the frame with the row of the product and session links.
Html TitleBarClose(const PageContext& context);
Html TableClose();

/// A whole page that tells an error instead of what was asked for.
Html ErrorPage(const PageContext& context, std::string_view message);

/// Writes `page` as the request's answer.
void WritePage(Visit& visit, Html page);

/// Closes the frame and the form of a page, and writes it.
void FinishFormPage(Visit& visit, Html page);

}  // namespace orlune
