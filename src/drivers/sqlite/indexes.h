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

/// Creates the missing indexes in one transaction. Throws DatabaseError, as for a read-only file.
void CreateMissingIndexes(sqlite3* database, const dialect::Catalogue& catalogue);

/// Drops all indexes, so that many rows are written quickly. Throws DatabaseError.
void DropIndexes(sqlite3* database, const dialect::Catalogue& catalogue);

}  // namespace orlune::sqlite
