#pragma once

#include <string_view>

#include "base/civil_time.h"
#include "base/regional_settings.h"
#include "platform/database.h"

namespace orlune {

/// Adds a small company to a new database: users, all with the password `password`, groups, group views,
/// events in the months around `today`, messages, and suggestions, some without an answer. Deterministic: the
/// same day gives the same rows. No transaction may be open. Throws DatabaseError.
void AddDemoCompany(Connection& database, const RegionalSettings& regional, Date today,
                    std::string_view password);

}  // namespace orlune
