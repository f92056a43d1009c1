#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/shared_objects.h"
#include "platform/database.h"
#include "platform/secrets.h"

namespace orlune {

/// What has changed in a calendar since a token was given (RFC 6578).
struct CalendarChanges {
  std::string Token;                 ///< the newest; letters, digits and "-"
  std::vector<std::string> Changed;  ///< names of objects that were made or changed and are there
  std::vector<std::string> Removed;  ///< names of objects that are not there any more
};

/// The token of the calendar's present state; it stays the same while nothing changes. Small queries only.
/// Throws DatabaseError.
std::string CurrentToken(Connection& database, const ExchangeTools& tools, const SharedCalendar& calendar);
/// Nothing when the token is of another database, too old, or none at all (valid-sync-token), and for a
/// calendar that is only read and has changed: hidden objects have other names than the log, so its clients
/// compare the ETags of all objects. Throws DatabaseError.
std::optional<CalendarChanges> ChangesSince(Connection& database, const ExchangeTools& tools,
                                            const SharedCalendar& calendar, std::string_view token);

/// Makes the tables and triggers of the exchange when they are missing; next to nothing otherwise. Throws
/// DatabaseError.
void PrepareExchange(Connection& database, Secrets& secrets);

}  // namespace orlune
