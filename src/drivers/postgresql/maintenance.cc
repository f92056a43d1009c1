#include "drivers/postgresql/maintenance.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <utility>

#include <fmt/format.h>
#include <libpq-fe.h>

#include "drivers/postgresql/postgresql_sql.h"
#include "drivers/postgresql/result_rows.h"
#include "drivers/postgresql/schema_reader.h"
#include "drivers/postgresql/schema_setup.h"
#include "drivers/postgresql/triggers.h"
#include "drivers/schema/indexes.h"
#include "drivers/schema/moment_text.h"
#include "drivers/schema/table_names.h"
#include "platform/database.h"

namespace orlune::postgresql {

using dialect::ColumnType;
using dialect::Quoted;
using dialect::TextLiteral;

namespace {

constexpr PostgresqlOptions kWithoutTimeout{.StatementTimeout = std::chrono::milliseconds{0},
                                            .LockTimeout = std::chrono::milliseconds{30'000}};

std::optional<std::int64_t> Number(std::string_view text) {
  std::int64_t number = 0;
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number);
  if (result.ec != std::errc{} || result.ptr != end) return std::nullopt;
  return number;
}

StoredField ReadField(std::string_view text, ColumnType type) {
  switch (type) {
    case ColumnType::kCounter:
    case ColumnType::kLong:
      if (const auto number = Number(text)) return *number;
      return Unreadable{std::string(text)};
    case ColumnType::kYesNo:
      if (text == "t" || text == "f") return text == "t";
      return Unreadable{std::string(text)};
    case ColumnType::kText:
    case ColumnType::kMemo:
      return std::string(text);
    default:
      return schema::ReadMoment(std::string(text), type);
  }
}

StoredRow ReadRow(const ResultHandle& result, int row, const dialect::Table& table) {
  StoredRow fields;
  fields.reserve(table.Columns.size());
  for (const dialect::Column& column : table.Columns) {
    const int position = static_cast<int>(fields.size());
    if (PQgetisnull(result.get(), row, position) == 1) {
      fields.push_back(column.Type == ColumnType::kYesNo ? StoredField(false) : StoredField());
    } else {
      fields.push_back(ReadField(FieldText(result, row, position), column.Type));
    }
  }
  return fields;
}

/// The text of a parameter; nothing for Null.
struct ParameterText {
  using Text = std::optional<std::string>;

  Text operator()(std::monostate) const { return std::nullopt; }
  Text operator()(bool isYes) const { return isYes ? "t" : "f"; }
  Text operator()(std::int64_t number) const { return std::to_string(number); }
  Text operator()(const std::string& text) const {
    if (text.find('\0') != std::string::npos) throw DatabaseError("a text holds the character NUL");
    return text;
  }
  Text operator()(const Unreadable&) const { throw DatabaseError("an unreadable field cannot be stored"); }
  template <class Moment>
  Text operator()(const Moment& moment) const {
    return schema::MomentText(moment);
  }
};

std::string InsertionInto(const dialect::Table& table) {
  std::string places;
  for (std::size_t i = 1; i <= table.Columns.size(); ++i)
    places.append(i == 1 ? "$" : ", $").append(std::to_string(i));
  return fmt::format("INSERT INTO {} ({}) VALUES ({})", Quoted(table.Name), schema::ColumnList(table),
                     places);
}

std::vector<unsigned> TypesOf(const dialect::Table& table) {
  std::vector<unsigned> types;
  for (const dialect::Column& column : table.Columns) types.push_back(TypeOf(column.Type));
  return types;
}

/// The sequence behind a table's counter, as an expression; Null for a table without one.
std::string SequenceOf(const dialect::Table& table) {
  const dialect::Column* counter = table.Counter();
  if (counter == nullptr) return "NULL::regclass";
  return fmt::format("pg_get_serial_sequence({}, {})::regclass", TextLiteral(Quoted(table.Name)),
                     TextLiteral(counter->Name));
}

/// The statement that raises a counter to `last`, unless it is higher.
std::string RaisingTo(const dialect::Table& table, std::int64_t last) {
  return fmt::format("SELECT setval({0}, {1}) WHERE {1} > coalesce(pg_sequence_last_value({0}), 0)",
                     SequenceOf(table), last);
}

std::int64_t HighestOf(const dialect::Table& table, std::span<const StoredRow> rows) {
  const auto counter = static_cast<std::size_t>(table.Counter() - table.Columns.data());
  std::int64_t highest = 0;
  for (const StoredRow& row : rows) highest = std::max(highest, std::get<std::int64_t>(row[counter]));
  return highest;
}

}  // namespace

Maintenance::Maintenance(const std::string& address) : link_(address, kWithoutTimeout) {
  Configure(link_, kWithoutTimeout);
}

dialect::Catalogue Maintenance::Tables() {
  return ReadSchema(link_).Tables;
}

std::vector<std::string> Maintenance::MissingIndexes() {
  const Schema schema = ReadSchema(link_);
  std::vector<std::string> names;
  for (const schema::Index* index : schema::MissingIndexes(schema.Tables, schema.Indexes))
    names.emplace_back(index->Name);
  return names;
}

std::vector<std::string> Maintenance::MissingTriggers() {
  return NamesOfMissingTriggers(link_, Tables());
}

std::vector<std::string> Maintenance::Damages() {
  std::vector<std::string> damages = AskAll(
      "SELECT 'the index ' || c.relname || ' is not valid' FROM pg_class c JOIN pg_index i ON i.indexrelid = "
      "c.oid WHERE c.relnamespace = to_regnamespace(quote_ident(current_schema())) AND NOT i.indisvalid");
  for (std::string& damage : AskAll(
           "SELECT 'the indexes are of another version of the server''s collation; run \"REINDEX DATABASE\"' "
           "FROM pg_collation WHERE collname = 'und-x-icu' "
           "AND collversion <> pg_collation_actual_version(oid)"))
    damages.push_back(std::move(damage));
  return damages;
}

std::int64_t Maintenance::RowCount(const std::string& table) {
  return Number(Ask("SELECT count(*) FROM " + Quoted(table)).value_or("0")).value_or(0);
}

std::optional<std::int64_t> Maintenance::HighestNumber(const dialect::Table& table) {
  const auto highest =
      Ask(fmt::format("SELECT max({}) FROM {}", Quoted(schema::CounterName(table)), Quoted(table.Name)));
  return highest ? Number(*highest) : std::nullopt;
}

std::vector<StoredRow> Maintenance::Rows(const dialect::Table& table, std::int64_t after, std::size_t most) {
  const std::string counter = Quoted(schema::CounterName(table));
  const std::string query = fmt::format("SELECT {0} FROM {1} WHERE {2} > {3} ORDER BY {2} LIMIT {4}",
                                        schema::ColumnList(table), Quoted(table.Name), counter, after, most);
  const ReplyPtr reply = link_.Run(query.c_str());
  const ResultHandle& result = link_.Require(*reply);
  std::vector<StoredRow> rows;
  rows.reserve(static_cast<std::size_t>(PQntuples(result.get())));
  for (int row = 0; row < PQntuples(result.get()); ++row) rows.push_back(ReadRow(result, row, table));
  return rows;
}

void Maintenance::Insert(const dialect::Table& table, std::span<const StoredRow> rows) {
  const std::string insertion = InsertionInto(table);
  const std::vector<unsigned> types = TypesOf(table);
  std::vector<ReplyPtr> replies{link_.Run(kBeginWriting), link_.Prepare("insertion", insertion, types)};
  for (const StoredRow& row : rows) {
    std::vector<std::optional<std::string>> texts;
    std::vector<const char*> values;
    texts.reserve(row.size());
    values.reserve(row.size());
    for (const StoredField& field : row) texts.push_back(std::visit(ParameterText(), field));
    for (const auto& text : texts) values.push_back(text ? text->c_str() : nullptr);
    replies.push_back(link_.RunPrepared("insertion", values));
  }
  replies.push_back(link_.Run("DEALLOCATE insertion"));
  if (!rows.empty()) replies.push_back(link_.Run(RaisingTo(table, HighestOf(table, rows)).c_str()));
  const ReplyPtr commit = link_.Run("COMMIT");
  link_.Await(*commit);
  if (commit->Now == Reply::State::kFailed) {
    link_.Run("ROLLBACK");
    link_.Mark();
    link_.Run("DEALLOCATE ALL");
    link_.Mark();
  }
  for (const ReplyPtr& reply : replies) link_.Require(*reply);
  RequireCommitted(*commit);
}

std::int64_t Maintenance::LastCounter(const std::string& table) {
  const dialect::Catalogue tables = Tables();
  const dialect::Table* found = tables.Find(table);
  if (found == nullptr) return 0;
  return Number(Ask("SELECT pg_sequence_last_value(" + SequenceOf(*found) + ")").value_or("0")).value_or(0);
}

void Maintenance::RaiseCounter(const std::string& table, std::int64_t last) {
  const dialect::Catalogue tables = Tables();
  const dialect::Table* found = tables.Find(table);
  if (found == nullptr) throw DatabaseError("no table " + table);
  Ask(RaisingTo(*found, last));
}

std::optional<std::string> Maintenance::UnfinishedCopySource() {
  if (Tables().Find(kUnfinishedCopy) == nullptr) return std::nullopt;
  return Ask("SELECT \"Source\" FROM " + Quoted(kUnfinishedCopy)).value_or("");
}

void Maintenance::MarkUnfinishedCopy(const std::string& source) {
  const dialect::Catalogue tables = Tables();
  std::vector<std::string> statements = RemovalOfTriggers(tables);
  for (const schema::Index* index : schema::PossibleIndexes(tables))
    statements.push_back("DROP INDEX IF EXISTS " + Quoted(index->Name));
  statements.push_back("CREATE TABLE " + Quoted(kUnfinishedCopy) + " (\"Source\" text)");
  statements.push_back("INSERT INTO " + Quoted(kUnfinishedCopy) + " VALUES (" + TextLiteral(source) + ")");
  statements.emplace_back(kTellOthers);
  RunAsOnlyWriter(link_, statements);
}

void Maintenance::MarkCopyComplete() {
  const Schema schema = ReadSchema(link_);
  std::vector<std::string> statements = MissingParts(link_, schema);
  statements.push_back("DROP TABLE IF EXISTS " + Quoted(kUnfinishedCopy));
  statements.emplace_back(kTellOthers);
  RunAsOnlyWriter(link_, statements);
  // The server would analyze the tables by itself, but later.
  for (const dialect::Table& table : schema.Tables.Tables) {
    if (table.Counter() != nullptr) Ask("ANALYZE " + Quoted(table.Name));
  }
}

std::optional<std::string> Maintenance::Ask(const std::string& query) {
  const ReplyPtr reply = link_.Run(query.c_str());
  const ResultHandle& result = link_.Require(*reply);
  if (PQntuples(result.get()) == 0 || PQgetisnull(result.get(), 0, 0) == 1) return std::nullopt;
  return std::string(FieldText(result, 0, 0));
}

std::vector<std::string> Maintenance::AskAll(const char* query) {
  const ReplyPtr reply = link_.Run(query);
  const ResultHandle& result = link_.Require(*reply);
  std::vector<std::string> texts;
  texts.reserve(static_cast<std::size_t>(PQntuples(result.get())));
  for (int row = 0; row < PQntuples(result.get()); ++row) texts.emplace_back(FieldText(result, row, 0));
  return texts;
}

}  // namespace orlune::postgresql
