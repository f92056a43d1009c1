#pragma once

#include "drivers/access_sql/catalogue.h"

struct sqlite3;

namespace orlune::sqlite {

/// Whether the file has every index for which it has the table and the columns. Throws DatabaseError.
bool HasAllIndexes(sqlite3* database, const access_sql::Catalogue& catalogue);

/// Creates the indexes that the queries of the pages need and that are missing, in one transaction of its
/// own. Throws DatabaseError, as for a file that is read-only.
void CreateMissingIndexes(sqlite3* database, const access_sql::Catalogue& catalogue);

}  // namespace orlune::sqlite
