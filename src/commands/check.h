#pragma once

#include <ostream>

#include "drivers/engines/database_engine.h"

namespace orlune {

/// Tells on `output` whether a database is complete and sound, and what to do about everything
/// that is not. Only reads. Returns whether it is sound. Throws DatabaseError when it cannot be opened.
bool CheckDatabase(const NamedDatabase& named, std::ostream& output);

}  // namespace orlune
