#pragma once

#include <string>
#include <vector>

#include "drivers/dialect/catalogue.h"

struct sqlite3;

namespace orlune::sqlite {

/// Whether the file has every index for which it has the table and the columns. Throws DatabaseError.
bool HasAllIndexes(sqlite3* database, const dialect::Catalogue& catalogue);

/// The names of those that are missing. Throws DatabaseError.
std::vector<std::string> NamesOfMissingIndexes(sqlite3* database, const dialect::Catalogue& catalogue);

/// Creates the indexes that the queries of the pages need and that are missing, in one transaction of its
/// own. Throws DatabaseError, as for a file that is read-only.
void CreateMissingIndexes(sqlite3* database, const dialect::Catalogue& catalogue);

/// Drops those indexes, so that many rows are written quickly. Throws DatabaseError.
void DropIndexes(sqlite3* database, const dialect::Catalogue& catalogue);

}  // namespace orlune::sqlite
