#pragma once

#include "base/civil_time.h"
#include "base/regional_settings.h"
#include "platform/database.h"

namespace orlune::demo {

/// Writes what people wrote each other in the two weeks before `today`, read and unread. Throws
/// DatabaseError.
void AddMessages(Connection& database, const RegionalSettings& regional, Date today);

/// Writes suggested events for the weeks to come: the sender's copies, the recipients' with their answers,
/// and the messages that tell of both. Throws DatabaseError.
void AddSuggestions(Connection& database, const RegionalSettings& regional, Date today);

}  // namespace orlune::demo
