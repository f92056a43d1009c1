#pragma once

#include <string>
#include <vector>

#include "model/calendar.h"
#include "model/group_view.h"
#include "model/ol_events.h"
#include "pages/calendar/view_mode.h"
#include "request/page_context.h"

namespace orlune {

class Connection;

/// The data of a view.
struct ViewContent {
  std::string CalendarName;                 ///< "" when the page does not show it
  int UnreadMessages = 0;                   ///< 0 when the page has no message button
  std::vector<GroupViewChoice> GroupViews;  ///< the group views to choose from
  std::vector<Calendar> Calendars;          ///< the calendars to choose from
  GroupViewMembers Group;                   ///< of the viewed group view; empty for a calendar
  OL_Events Events;
};

/// Throws DatabaseError.
ViewContent LoadView(Connection& database, const PageContext& context, ViewMode mode);

}  // namespace orlune
