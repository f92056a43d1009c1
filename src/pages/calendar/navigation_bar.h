#pragma once

#include "html/html.h"
#include "pages/calendar/view_mode.h"
#include "request/page_context.h"

namespace orlune {

/// Whether the bar has the button for messages, which needs the number of unread ones.
bool HasMessageButton(const PageContext& context);

/// The tool bar over a calendar: stepping through time, and the ways to events, messages, preferences and
/// administration that are open to the user.
Html NavigationBar(const PageContext& context, ViewMode mode, int unreadMessages);

}  // namespace orlune
