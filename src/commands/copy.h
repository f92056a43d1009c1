#pragma once

#include <ostream>

#include "commands/copy_progress.h"
#include "drivers/engines/database_engine.h"

namespace orlune {

/// Copies all rows of the calendar's tables into a new database, in the order of their counters, and compares
/// both; the result is a table on `output`. Called again after an interruption, it resumes: the target is
/// marked as incomplete until the comparison has succeeded. A source of the form before the upgrade is copied
/// as it is, and the copy is upgraded. The source is only read. Throws std::runtime_error, also when the two
/// differ.
void CopyDatabase(const NamedDatabase& from, const NamedDatabase& to, std::ostream& output,
                  CopyProgress& progress);

}  // namespace orlune
