#include "drivers/postgresql/triggers.h"

#include <algorithm>

#include <fmt/format.h>
#include <libpq-fe.h>

#include "drivers/dialect/engine_sql.h"
#include "drivers/postgresql/postgresql_sql.h"
#include "drivers/postgresql/result_rows.h"
#include "drivers/schema/triggers.h"

namespace orlune::postgresql {

namespace {

using dialect::Quoted;
using schema::DefinedTrigger;
using schema::Trigger;

/// Changes are numbered by their transactions.
const schema::TriggerSql& Sql() {
  static const PostgresqlSql kEngine;
  static const schema::TriggerSql kSql{
      .Engine = kEngine, .NextMoment = "pg_current_xact_id()::text::bigint", .Exactly = ""};
  return kSql;
}

constexpr const char* kExisting =
    "SELECT t.tgname, f.prosrc FROM pg_trigger t JOIN pg_class c ON c.oid = t.tgrelid "
    "JOIN pg_proc f ON f.oid = t.tgfoid "
    "WHERE c.relnamespace = to_regnamespace(quote_ident(current_schema())) AND NOT t.tgisinternal";

std::vector<Trigger> Possible(const dialect::Catalogue& tables) {
  return schema::PossibleTriggers(tables, Sql());
}

/// What the trigger's function says; the rest follows from the name.
DefinedTrigger Defined(const Trigger& trigger) {
  std::string body = "BEGIN ";
  if (!trigger.Condition.empty()) body += "IF NOT (" + trigger.Condition + ") THEN RETURN NULL; END IF; ";
  for (const std::string& statement : trigger.Statements) body += statement + "; ";
  return {trigger.Name, body + "RETURN NULL; END"};
}

std::vector<DefinedTrigger> Existing(Link& link) {
  const ReplyPtr reply = link.Run(kExisting);
  const ResultHandle& result = link.Require(*reply);
  std::vector<DefinedTrigger> existing;
  existing.reserve(static_cast<std::size_t>(PQntuples(result.get())));
  for (int row = 0; row < PQntuples(result.get()); ++row)
    existing.push_back({std::string(FieldText(result, row, 0)), std::string(FieldText(result, row, 1))});
  return existing;
}

std::vector<Trigger> Missing(Link& link, const dialect::Catalogue& tables) {
  std::vector<Trigger> missing = Possible(tables);
  if (missing.empty()) return {};
  const std::vector<DefinedTrigger> existing = Existing(link);
  std::erase_if(missing, [&existing](const Trigger& trigger) {
    return std::find(existing.begin(), existing.end(), Defined(trigger)) != existing.end();
  });
  return missing;
}

}  // namespace

std::vector<std::string> NamesOfMissingTriggers(Link& link, const dialect::Catalogue& tables) {
  std::vector<std::string> names;
  for (const Trigger& trigger : Missing(link, tables)) names.push_back(trigger.Name);
  return names;
}

std::vector<std::string> CreationOfMissingTriggers(Link& link, const dialect::Catalogue& tables) {
  std::vector<std::string> statements;
  for (const Trigger& trigger : Missing(link, tables)) {
    const std::string name = Quoted(trigger.Name);
    // Whoever writes to the tables need not have them in their search path. A session plans the statements
    // once, perhaps while the tables are small, and goes on with the plans when they have grown.
    statements.push_back(
        fmt::format("CREATE OR REPLACE FUNCTION {}() RETURNS trigger LANGUAGE plpgsql "
                    "SET search_path FROM CURRENT SET enable_seqscan = off AS {}",
                    name, dialect::TextLiteral(Defined(trigger).Definition)));
    statements.push_back(
        fmt::format("CREATE OR REPLACE TRIGGER {0} AFTER {1} ON {2} FOR EACH ROW EXECUTE FUNCTION {0}()",
                    name, trigger.Change, Quoted(trigger.Table)));
  }
  return statements;
}

std::vector<std::string> RemovalOfTriggers(const dialect::Catalogue& tables) {
  std::vector<std::string> statements;
  for (const Trigger& trigger : Possible(tables)) {
    statements.push_back(
        fmt::format("DROP TRIGGER IF EXISTS {} ON {}", Quoted(trigger.Name), Quoted(trigger.Table)));
  }
  return statements;
}

}  // namespace orlune::postgresql
