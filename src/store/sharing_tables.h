#pragma once

#include <string>
#include <string_view>

#include "platform/database.h"
#include "store/query.h"

namespace orlune {

// The tables of the exchange with other calendars, which a database has once a hosting page has shared.
// Functions that write throw DatabaseError.

/// Creates the tables that are missing; next to nothing when none is.
void CreateSharingTables(Connection& database);
/// The same, but looks only for the one that pages read, EventDays.
void CreateSharingTablesForPages(Connection& database);

/// What makes the UIDs of this database's events differ from those of others, and what makes the tokens of
/// its log differ from those of another copy of it; "" before `NameDatabase`.
struct ExchangeNames {
  std::string Database;
  std::string Log;
};
Query<std::string> DatabaseNameQuery();
Query<std::string> LogNameQuery();
/// Names the database and its log, each unless it has a name.
void NameDatabase(Connection& database, const ExchangeNames& names);

}  // namespace orlune
