#pragma once

#include "base/civil_time.h"
#include "base/regional_settings.h"
#include "platform/database.h"

namespace orlune::demo {

/// Writes the events of every person and group from four months before `today` to four months after;
/// repeating events end after a year. Throws DatabaseError.
void AddEvents(Connection& database, const RegionalSettings& regional, Date today);

}  // namespace orlune::demo
