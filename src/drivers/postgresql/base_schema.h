#pragma once

#include <string>

namespace orlune {

/// Creates the tables that every database starts with, without rows, in a PostgreSQL database that is there
/// already. Throws DatabaseError, as when the database has one of them; nothing is changed then.
void CreateBaseTables(const std::string& address);

/// Removes all tables of a calendar, with their rows. Throws DatabaseError.
void DropTables(const std::string& address);

}  // namespace orlune
