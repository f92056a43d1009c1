#pragma once

#include <string_view>

#include "html/html.h"
#include "request/page_context.h"
#include "texts/text.h"

namespace orlune {

/// The attributes that show `text` in the browser's status bar while the mouse is over a link.
Html StatusHandler(std::string_view text);

/// The address of a page of the system: the script's with the query `query`.
Html PageLink(const PageContext& context, Markup query);

/// A button of a tool bar that leads to a page.
Html PageButton(const PageContext& context, Markup query, Text text, Markup imageFile);

/// A button of a tool bar: an image under `ImageDir` that is a link. `text` is the image's text, shown in the
/// status bar as well; `name` and `onClick` are left out when they are empty.
Html ImageLink(const PageContext& context, const Html& href, std::string_view text, Markup imageFile,
               Markup name = "", const Html& onClick = {});

}  // namespace orlune
