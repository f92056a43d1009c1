#include "drivers/postgresql/schema_setup.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <libpq-fe.h>

#include "drivers/postgresql/case_folding_function.h"
#include "drivers/postgresql/postgresql_sql.h"
#include "drivers/postgresql/schema_reader.h"
#include "drivers/postgresql/triggers.h"
#include "drivers/schema/database_maintenance.h"
#include "drivers/schema/indexes.h"
#include "platform/database.h"

namespace orlune::postgresql {

namespace {

constexpr int kOldestVersion = 150'000;

std::string DefaultSetting(std::string_view name, std::chrono::milliseconds value) {
  const std::string quoted = dialect::TextLiteral(name);
  return fmt::format("SELECT set_config({0}, '{1}', false) WHERE current_setting({0}) = '0'", quoted,
                     value.count());
}

void RequireCompleteCopy(const dialect::Catalogue& tables) {
  if (tables.Find(kUnfinishedCopy) != nullptr) throw DatabaseError("incomplete copy; rerun \"orlune copy\"");
}

}  // namespace

std::vector<std::string> MissingParts(Link& link, const Schema& schema) {
  std::vector<std::string> statements;
  if (!schema.CanCompareTexts) statements.push_back(CreateCaseFoldingFunction());
  for (const schema::Index* index : schema::MissingIndexes(schema.Tables, schema.Indexes))
    statements.push_back(schema::CreationOf(*index, *schema.Tables.Find(index->Table), PostgresqlSql()));
  for (std::string& statement : CreationOfMissingTriggers(link, schema.Tables))
    statements.push_back(std::move(statement));
  return statements;
}

void Configure(Link& link, const PostgresqlOptions& options) {
  if (link.ServerVersion() < kOldestVersion) {
    throw DatabaseError(
        fmt::format("PostgreSQL {} is too old; use version 15 or later", link.ServerVersion() / 10'000));
  }
  if (link.ServerEncoding() != "UTF8") {
    throw DatabaseError(
        fmt::format("the database has the encoding {}; create one in UTF8", link.ServerEncoding()));
  }
  for (const char* setting : {"SET DateStyle = ISO", "SET standard_conforming_strings = on"})
    link.Run(setting);
  // The pages' queries want the same plan for all values; planning takes longer than running.
  link.Run(
      "SELECT set_config('plan_cache_mode', 'force_generic_plan', false) "
      "WHERE current_setting('plan_cache_mode') = 'auto'");
  link.Run(DefaultSetting("statement_timeout", options.StatementTimeout).c_str());
  link.Run(DefaultSetting("lock_timeout", options.LockTimeout).c_str());
  link.Mark();
  link.Run("LISTEN orlune_schema");  // fails on a standby, where no schema changes by itself
  link.Mark();
}

Schema SetUpSchema(Link& link) {
  Schema schema = ReadSchema(link);
  if (schema.Tables.Find("Calendars") == nullptr) {
    throw DatabaseError("not an Orlune database: table Calendars is missing; \"orlune init\" creates it");
  }
  RequireCompleteCopy(schema.Tables);
  const std::vector<std::string> missing = MissingParts(link, schema);
  if (missing.empty() || !schema.IsWritable) return schema;
  try {
    RunAsOnlyWriter(link, missing);
  } catch (const DatabaseError&) {
    if (!schema.CanCompareTexts) throw;  // without an index it is only slow
  }
  return schema;
}

void RunAsOnlyWriter(Link& link, std::span<const std::string> statements) {
  std::vector<ReplyPtr> replies{link.Run(kBeginWriting), link.Run(kBecomeOnlyWriter)};
  for (const std::string& statement : statements) replies.push_back(link.Run(statement.c_str()));
  const ReplyPtr commit = link.Run("COMMIT");
  link.Await(*commit);
  if (commit->Now == Reply::State::kFailed) {
    link.Run("ROLLBACK");
    link.Mark();
  }
  for (const ReplyPtr& reply : replies) link.Require(*reply);
  RequireCommitted(*commit);
}

void RequireCommitted(const Reply& commit) {
  if (commit.Now != Reply::State::kDone) ThrowFailure(commit);
  if (std::string_view(PQcmdStatus(commit.Result.get())) != "COMMIT")
    throw DatabaseError("the transaction was rolled back");
}

}  // namespace orlune::postgresql
