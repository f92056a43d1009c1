#pragma once

#include <ostream>
#include <string>

#include "commands/copy_progress.h"
#include "commands/database_engines.h"

namespace orlune {

/// A database and where it is to be copied to; each a file or a postgresql:// URL.
struct CopyOptions {
  std::string From;
  std::string To;
};

/// Copies all rows of the calendar's tables into a new database, in the order of their counters, and compares
/// both afterwards; the result is a table on `output`. What was interrupted goes on where it stopped when it
/// is called again, because the target says that it is unfinished until the comparison has succeeded. A
/// source of the form before the upgrade is copied as it is, and the copy is upgraded. The source is only
/// read. Throws std::runtime_error with a sentence for the operator, also when the two differ.
void CopyDatabase(const CopyOptions& options, DatabaseEngines& engines, std::ostream& output,
                  CopyProgress& progress);

}  // namespace orlune
