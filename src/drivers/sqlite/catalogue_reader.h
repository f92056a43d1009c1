#pragma once

#include "drivers/access_sql/catalogue.h"

struct sqlite3;

namespace orlune::sqlite {

/// The tables of a database. Throws DatabaseError.
access_sql::Catalogue ReadCatalogue(sqlite3* database);

}  // namespace orlune::sqlite
