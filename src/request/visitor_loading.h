#pragma once

#include <optional>
#include <string>

#include "platform/database.h"
#include "platform/page_host.h"
#include "platform/surroundings.h"
#include "request/session_values.h"
#include "request/visitor.h"

namespace orlune {

struct LoadedVisitor {
  orlune::Visitor Visitor;
  bool HasAccount = true;     ///< false when the login is not valid any more, see `IsLoginOf`
  std::string InvalidDate{};  ///< the requested date, when it is not a valid one
};

/// Stores the query parameters "cn" (calendar), "cd" (date) and "dm" (view) in the session, and reads from it
/// who is logged in and what is viewed; an unknown calendar is replaced by the user's own. Then loads the
/// user's settings (those of 'admin' when nobody is logged in), the groups that the viewed calendars belong
/// to, the groups that the user administers, and the event types. Throws DatabaseError.
LoadedVisitor LoadVisitor(const HostingPage& hosting, const ScriptingContext& context,
                          const Surroundings& surroundings, SessionValues& session, Connection& database);

}  // namespace orlune
