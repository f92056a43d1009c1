#pragma once

#include "commands/findings.h"
#include "drivers/dialect/catalogue.h"
#include "drivers/schema/database_maintenance.h"

namespace orlune {

/// Checks tables, columns, indexes, triggers, counters and whether a copy is complete. Returns our tables as
/// far as they are readable: with the columns that exist, and each with its counter. Throws DatabaseError.
dialect::Catalogue CheckSchema(DatabaseMaintenance& database, Findings& findings);

}  // namespace orlune
