#pragma once

#include "drivers/dialect/catalogue.h"

struct sqlite3;

namespace orlune::sqlite {

/// The tables of a database. Throws DatabaseError.
dialect::Catalogue ReadCatalogue(sqlite3* database);

}  // namespace orlune::sqlite
