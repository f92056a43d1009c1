#pragma once

#include <string>

namespace orlune {

/// Creates the base tables in an existing PostgreSQL database. Throws DatabaseError, as when it has one of
/// them; nothing is changed then.
void CreateBaseTables(const std::string& address);

/// Drops all tables of a calendar. Throws DatabaseError.
void DropTables(const std::string& address);

}  // namespace orlune
