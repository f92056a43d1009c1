#pragma once

#include <span>
#include <string>
#include <vector>

#include "drivers/postgresql/link.h"
#include "drivers/postgresql/options.h"
#include "drivers/postgresql/schema_reader.h"

namespace orlune::postgresql {

constexpr const char* kBeginWriting = "BEGIN ISOLATION LEVEL READ COMMITTED READ WRITE";
/// Inside a transaction: writes together with others, but not while an only writer is at work.
constexpr const char* kBecomeWriter =
    "SELECT pg_advisory_xact_lock_shared(1330793550, hashtext(current_schema()))";
/// Inside a transaction: waits until nobody else writes, and keeps others from it until the end.
constexpr const char* kBecomeOnlyWriter =
    "SELECT pg_advisory_xact_lock(1330793550, hashtext(current_schema()))";
/// Tells the other connections, of every node, that the tables have changed.
constexpr const char* kTellOthers = "NOTIFY orlune_schema";

/// Checks the server and gives a new connection its settings. Throws DatabaseError for a server that cannot
/// hold a calendar.
void Configure(Link& link, const PostgresqlOptions& options);

/// The statements that create the missing indexes and triggers, and the function that they need. Throws
/// DatabaseError.
std::vector<std::string> MissingParts(Link& link, const Schema& schema);

/// Reads the tables of a calendar, and creates missing indexes and triggers unless the database is read-only.
/// Throws DatabaseError when it is not a calendar's.
Schema SetUpSchema(Link& link);

/// Runs `statements` in one transaction as the only writer; all or none. Throws DatabaseError.
void RunAsOnlyWriter(Link& link, std::span<const std::string> statements);

/// Throws DatabaseError unless the reply is that of a successful COMMIT.
void RequireCommitted(const Reply& commit);

}  // namespace orlune::postgresql
