#pragma once

#include "base/civil_time.h"
#include "base/regional_settings.h"
#include "platform/database.h"

namespace orlune::demo {

/// Writes messages of the two weeks before `today`, read and unread. Throws DatabaseError.
void AddMessages(Connection& database, const RegionalSettings& regional, Date today);

/// Writes suggestions for the next two weeks: the sender's copies, the recipients' copies with their answers,
/// and the messages about them. Throws DatabaseError.
void AddSuggestions(Connection& database, const RegionalSettings& regional, Date today);

}  // namespace orlune::demo
