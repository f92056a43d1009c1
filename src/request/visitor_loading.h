#pragma once

#include <optional>
#include <string>

#include "platform/database.h"
#include "platform/page_host.h"
#include "platform/surroundings.h"
#include "request/session_values.h"
#include "request/visitor.h"

namespace orlune {

/// What a request of somebody who is logged in begins with.
struct LoadedVisitor {
  orlune::Visitor Visitor;
  bool HasAccount = true;     ///< false when the login is no longer one, see `IsLoginOf`
  std::string InvalidDate{};  ///< the date that the request asked for, when it is none
};

/// Takes over the query parameters "cn" (calendar), "cd" (date) and "dm" (view) into the session, and reads
/// from it who is logged in and what is shown; a calendar that does not exist falls back to the user's own.
/// Then loads the user's settings (those of 'admin' when nobody is logged in), the groups that the viewed
/// calendars belong to, the groups that the user administers, and the event types. Throws DatabaseError.
LoadedVisitor LoadVisitor(const HostingPage& hosting, const ScriptingContext& context,
                          const Surroundings& surroundings, SessionValues& session, Connection& database);

}  // namespace orlune
