#pragma once

#include "html/html.h"
#include "pages/calendar/view_mode.h"
#include "request/page_context.h"

namespace orlune {

/// Whether the bar has a message button, so that the number of unread messages has to be loaded.
bool HasMessageButton(const PageContext& context);

/// The toolbar of a view: previous, today and next, and the links to events, messages, preferences and
/// administration that are available to the user.
Html NavigationBar(const PageContext& context, ViewMode mode, int unreadMessages);

}  // namespace orlune
