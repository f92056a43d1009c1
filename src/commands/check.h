#pragma once

#include <ostream>

#include "drivers/engines/database_engine.h"

namespace orlune {

/// Writes to `output` what is wrong with a database and what to do about it. Only reads. Returns whether the
/// database is sound. Throws DatabaseError when it cannot be opened.
bool CheckDatabase(const NamedDatabase& named, std::ostream& output);

}  // namespace orlune
