#pragma once

#include <string_view>

#include "html/html.h"
#include "request/page_context.h"
#include "texts/text.h"

namespace orlune {

/// The attributes that show `text` in the browser's status bar while the mouse is over a link.
Html StatusHandler(std::string_view text);

/// The URL of a page: the script with the query `query`.
Html PageLink(const PageContext& context, Markup query);

/// The URL of the page for devices, subscriptions and files, with a query such as "?act=import".
Html SharingLink(const PageContext& context, Markup query = "");

/// A toolbar button that links to a page.
Html PageButton(const PageContext& context, Markup query, Text text, Markup imageFile);

/// A toolbar button: a link with an image of `ImageDir`. `text` is the image's alternative text, also shown
/// in the status bar; empty `name` and `onClick` are omitted.
Html ImageLink(const PageContext& context, const Html& href, std::string_view text, Markup imageFile,
               Markup name = "", const Html& onClick = {});

}  // namespace orlune
