#include "drivers/postgresql/schema_reader.h"

#include <charconv>
#include <utility>

#include <libpq-fe.h>

#include "drivers/postgresql/postgresql_sql.h"
#include "drivers/postgresql/result_rows.h"

namespace orlune::postgresql {

namespace {

constexpr const char* kColumns =
    "SELECT c.relname, a.attname, a.atttypid, a.attidentity <> '' FROM pg_class c "
    "JOIN pg_attribute a ON a.attrelid = c.oid "
    "WHERE c.relnamespace = to_regnamespace(quote_ident(current_schema())) AND c.relkind IN ('r', 'p') "
    "AND a.attnum > 0 AND NOT a.attisdropped ORDER BY c.oid, a.attnum";
constexpr const char* kIndexes =
    "SELECT c.relname FROM pg_class c JOIN pg_index i ON i.indexrelid = c.oid "
    "WHERE c.relnamespace = to_regnamespace(quote_ident(current_schema())) AND i.indisvalid";
constexpr const char* kState =
    "SELECT coalesce(current_schema(), ''), to_regprocedure('orlune_fold(text)') IS NOT NULL, "
    "current_setting('transaction_read_only') = 'off', "
    // The time as a number, which is the same in every time zone.
    "CASE WHEN NOT pg_is_in_recovery() THEN concat_ws(' ', extract(epoch FROM pg_postmaster_start_time()), "
    "(SELECT oid FROM pg_database WHERE datname = current_database()), current_user, current_schemas(true)) "
    "END";

bool IsTrue(const ResultHandle& result, int row, int column) {
  return FieldText(result, row, column) == "t";
}

unsigned TypeAt(const ResultHandle& result, int row) {
  const std::string_view text = FieldText(result, row, 2);
  unsigned type = 0;
  std::from_chars(text.data(), text.data() + text.size(), type);
  return type;
}

dialect::Catalogue TablesOf(const ResultHandle& columns) {
  dialect::Catalogue catalogue;
  for (int row = 0; row < PQntuples(columns.get()); ++row) {
    const std::string_view table = FieldText(columns, row, 0);
    if (catalogue.Tables.empty() || catalogue.Tables.back().Name != table)
      catalogue.Tables.push_back({std::string(table), {}});
    catalogue.Tables.back().Columns.push_back({std::string(FieldText(columns, row, 1)),
                                               ColumnTypeOf(TypeAt(columns, row), IsTrue(columns, row, 3))});
  }
  return catalogue;
}

std::shared_ptr<const std::string> SourceOf(const ResultHandle& state, const ResultHandle& columns) {
  constexpr int kServer = 3;
  if (PQgetisnull(state.get(), 0, kServer) == 1) return nullptr;
  std::string source(FieldText(state, 0, kServer));
  for (int row = 0; row < PQntuples(columns.get()); ++row) {
    for (int column = 0; column < PQnfields(columns.get()); ++column)
      source.append(1, '\0').append(FieldText(columns, row, column));
  }
  return std::make_shared<const std::string>(std::move(source));
}

}  // namespace

Schema ReadSchema(Link& link) {
  const ReplyPtr columns = link.Run(kColumns);
  const ReplyPtr indexes = link.Run(kIndexes);
  const ReplyPtr state = link.Run(kState);
  link.Require(*state);

  Schema schema;
  schema.Tables = TablesOf(columns->Result);
  for (int row = 0; row < PQntuples(indexes->Result.get()); ++row)
    schema.Indexes.emplace_back(FieldText(indexes->Result, row, 0));
  schema.Name = FieldText(state->Result, 0, 0);
  schema.CanCompareTexts = IsTrue(state->Result, 0, 1);
  schema.IsWritable = IsTrue(state->Result, 0, 2);
  schema.Source = SourceOf(state->Result, columns->Result);
  return schema;
}

}  // namespace orlune::postgresql
