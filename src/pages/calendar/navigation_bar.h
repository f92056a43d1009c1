#pragma once

#include "html/html.h"
#include "pages/calendar/view_mode.h"

namespace orlune {

struct Visit;

/// Announces to the database what `NavigationBar` will ask.
void AnnounceNavigationBar(const Visit& visit);

/// The tool bar over a calendar: stepping through time, and the ways to events, messages, preferences and
/// administration that are open to the user. Throws DatabaseError.
Html NavigationBar(const Visit& visit, ViewMode mode);

}  // namespace orlune
