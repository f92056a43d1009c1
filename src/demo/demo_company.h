#pragma once

#include <string_view>

#include "base/civil_time.h"
#include "base/regional_settings.h"
#include "platform/database.h"

namespace orlune {

/// Adds a small company to a new database: users, who all log in with `password`, groups, group views, events
/// for the months around `today`, messages, and suggestions of which some still wait for an answer. The same
/// day always gives the same rows. No transaction may be open. Throws DatabaseError.
void AddDemoCompany(Connection& database, const RegionalSettings& regional, Date today,
                    std::string_view password);

}  // namespace orlune
