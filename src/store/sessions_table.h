#pragma once

#include <cstdint>
#include <string_view>

#include "store/query.h"

namespace orlune {

// The table Sessions, which is made when it is first used. It holds the sessions of pages that keep them in
// the database, and the logins that were ended while a browser, or whoever copied its cookie, may still hold
// them in a sealed cookie.

/// Does nothing when the table is there.
void CreateSessionsTable(Connection& database);

/// Whether the login in a sealed cookie was ended. The table has to be there.
Query<bool> IsEndedLogin(std::string_view loginId);
/// Ends the login until `expires`, when its cookie is worth nothing any more, and forgets those that have
/// expired at `now`, both in seconds since 1970. Throws DatabaseError.
void EndLogin(Connection& database, std::string_view loginId, std::int64_t expires, std::int64_t now);

}  // namespace orlune
