#pragma once

#include <string>
#include <vector>

#include "drivers/dialect/catalogue.h"

struct sqlite3;

namespace orlune::sqlite {

/// Whether the file has each index whose table and columns exist. Throws DatabaseError.
bool HasAllIndexes(sqlite3* database, const dialect::Catalogue& catalogue);

/// Throws DatabaseError.
std::vector<std::string> NamesOfMissingIndexes(sqlite3* database, const dialect::Catalogue& catalogue);

/// Creates the missing indexes and triggers in one transaction. Throws DatabaseError, as for a read-only
/// file.
void CreateMissingParts(sqlite3* database, const dialect::Catalogue& catalogue);

/// Drops all indexes and triggers, so that many rows are written quickly, and as they are. Throws
/// DatabaseError.
void DropParts(sqlite3* database, const dialect::Catalogue& catalogue);

}  // namespace orlune::sqlite
