#pragma once

#include <optional>
#include <string>

#include "platform/database.h"
#include "platform/page_host.h"
#include "platform/surroundings.h"
#include "request/session_values.h"
#include "request/visitor.h"

namespace orlune {

/// What is viewed.
struct View {
  std::string Calendar;  ///< the name of a calendar, or "@" and that of a group view
  Date Day;
  std::string Mode{};         ///< "month", "week", "day", or "" for the user's start mode
  std::string InvalidDate{};  ///< the requested date, when it is not a valid one
};

struct LoadedVisitor {
  orlune::Visitor Visitor;
  bool HasAccount = true;  ///< false when the login is not valid any more, see `IsLoginOf`
};

/// Stores the query parameters "cn" (calendar), "cd" (date) and "dm" (view) in the session, and reads from it
/// what is viewed.
View Navigate(const HostingPage& hosting, const Request& request, const Surroundings& surroundings,
              SessionValues& session);

/// Reads from the session who is logged in, and loads that user's settings (those of 'admin' when nobody is
/// logged in), the groups that the viewed calendars belong to, the groups that the user administers, and the
/// event types. An unknown calendar is replaced by the user's own, in the session too. Throws DatabaseError.
LoadedVisitor LoadVisitor(const HostingPage& hosting, const ScriptingContext& context,
                          const Surroundings& surroundings, SessionValues& session, Connection& database,
                          View view);

}  // namespace orlune
