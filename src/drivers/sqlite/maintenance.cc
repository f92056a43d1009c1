#include "drivers/sqlite/maintenance.h"

#include <array>
#include <string_view>
#include <utility>

#include <fmt/format.h>
#include <sqlite3.h>

#include "drivers/dialect/engine_sql.h"
#include "drivers/schema/moment_text.h"
#include "drivers/schema/table_names.h"
#include "drivers/sqlite/catalogue_reader.h"
#include "drivers/sqlite/indexes.h"
#include "drivers/sqlite/triggers.h"
#include "platform/database.h"

namespace orlune::sqlite {

using dialect::ColumnType;
using dialect::Quoted;

namespace {

int BindText(sqlite3_stmt* statement, int position, std::string_view text) {
  return sqlite3_bind_text64(statement, position, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

struct Binder {
  sqlite3_stmt* Statement;
  int Position;

  int operator()(std::monostate) const { return sqlite3_bind_null(Statement, Position); }
  int operator()(bool isYes) const { return sqlite3_bind_int64(Statement, Position, isYes ? 1 : 0); }
  int operator()(std::int64_t number) const { return sqlite3_bind_int64(Statement, Position, number); }
  int operator()(const std::string& text) const { return BindText(Statement, Position, text); }
  template <class Moment>
  int operator()(const Moment& moment) const {
    return BindText(Statement, Position, schema::MomentText(moment));
  }
  int operator()(const Unreadable&) const { throw DatabaseError("an unreadable field cannot be stored"); }
};

void Bind(sqlite3_stmt* statement, int position, const StoredField& field) {
  Check(sqlite3_db_handle(statement), std::visit(Binder{statement, position}, field));
}

std::string TextAt(sqlite3_stmt* row, int column) {
  const auto* bytes = static_cast<const char*>(sqlite3_column_blob(row, column));
  return {bytes, static_cast<std::size_t>(bytes == nullptr ? 0 : sqlite3_column_bytes(row, column))};
}

StoredField ReadField(sqlite3_stmt* row, int column, ColumnType type) {
  const int storage = sqlite3_column_type(row, column);
  if (storage == SQLITE_NULL) return type == ColumnType::kYesNo ? StoredField(false) : StoredField();
  switch (type) {
    case ColumnType::kCounter:
    case ColumnType::kLong:
      if (storage == SQLITE_INTEGER) return std::int64_t{sqlite3_column_int64(row, column)};
      return Unreadable{TextAt(row, column)};
    case ColumnType::kYesNo:
      if (storage == SQLITE_INTEGER) return sqlite3_column_int64(row, column) != 0;
      return Unreadable{TextAt(row, column)};
    case ColumnType::kText:
    case ColumnType::kMemo:
      return TextAt(row, column);
    default:
      return schema::ReadMoment(TextAt(row, column), type);
  }
}

std::string InsertionInto(const dialect::Table& table) {
  std::string places = "?";
  for (std::size_t i = 1; i < table.Columns.size(); ++i) places += ", ?";
  return fmt::format("INSERT INTO {} ({}) VALUES ({})", Quoted(table.Name), schema::ColumnList(table),
                     places);
}

/// A transaction of the only writer; rolled back unless committed.
class WriteTransaction {
 public:
  explicit WriteTransaction(sqlite3* database) : database_(database) {
    sqlite::Run(database, "BEGIN IMMEDIATE");
  }
  WriteTransaction(const WriteTransaction&) = delete;
  WriteTransaction& operator=(const WriteTransaction&) = delete;
  ~WriteTransaction() {
    if (sqlite3_get_autocommit(database_) == 0) {
      sqlite3_exec(database_, "ROLLBACK", nullptr, nullptr, nullptr);
    }
  }

  void Commit() { sqlite::Run(database_, "COMMIT"); }

 private:
  sqlite3* database_;
};

}  // namespace

dialect::Catalogue Maintenance::Tables() {
  return ReadCatalogue(database_.get());
}

std::vector<std::string> Maintenance::MissingIndexes() {
  return NamesOfMissingIndexes(database_.get(), Tables());
}

std::vector<std::string> Maintenance::MissingTriggers() {
  return NamesOfMissingTriggers(database_.get(), Tables());
}

std::vector<std::string> Maintenance::Damages() {
  std::vector<std::string> damages;
  const auto row = Prepare(database_.get(), "PRAGMA integrity_check");
  while (Step(row.get())) {
    if (ColumnText(row.get(), 0) != "ok") damages.emplace_back(ColumnText(row.get(), 0));
  }
  return damages;
}

std::int64_t Maintenance::RowCount(const std::string& table) {
  const auto row = Prepare(database_.get(), "SELECT count(*) FROM " + Quoted(table));
  Step(row.get());
  return sqlite3_column_int64(row.get(), 0);
}

std::optional<std::int64_t> Maintenance::HighestNumber(const dialect::Table& table) {
  const auto row =
      Prepare(database_.get(),
              fmt::format("SELECT max({}) FROM {}", Quoted(schema::CounterName(table)), Quoted(table.Name)));
  Step(row.get());
  if (sqlite3_column_type(row.get(), 0) == SQLITE_NULL) return std::nullopt;
  return sqlite3_column_int64(row.get(), 0);
}

std::vector<StoredRow> Maintenance::Rows(const dialect::Table& table, std::int64_t after, std::size_t most) {
  const std::string counter = Quoted(schema::CounterName(table));
  const auto row =
      Prepare(database_.get(), fmt::format("SELECT {} FROM {} WHERE {} > ? ORDER BY {} LIMIT ?",
                                           schema::ColumnList(table), Quoted(table.Name), counter, counter));
  Bind(row.get(), 1, after);
  Bind(row.get(), 2, static_cast<std::int64_t>(most));
  std::vector<StoredRow> rows;
  while (Step(row.get())) {
    StoredRow& fields = rows.emplace_back();
    fields.reserve(table.Columns.size());
    for (const dialect::Column& column : table.Columns) {
      fields.push_back(ReadField(row.get(), static_cast<int>(fields.size()), column.Type));
    }
  }
  return rows;
}

void Maintenance::Insert(const dialect::Table& table, std::span<const StoredRow> rows) {
  WriteTransaction transaction(database_.get());
  const auto insertion = Prepare(database_.get(), InsertionInto(table));
  for (const StoredRow& row : rows) {
    int position = 0;
    for (const StoredField& field : row) Bind(insertion.get(), ++position, field);
    sqlite::Run(insertion.get());
  }
  transaction.Commit();
}

std::int64_t Maintenance::LastCounter(const std::string& table) {
  if (!HasTable("sqlite_sequence")) return 0;
  const auto row =
      Prepare(database_.get(), "SELECT max(seq) FROM sqlite_sequence WHERE name = ? COLLATE NOCASE");
  Bind(row.get(), 1, table);
  Step(row.get());
  return sqlite3_column_int64(row.get(), 0);
}

void Maintenance::RaiseCounter(const std::string& table, std::int64_t last) {
  if (LastCounter(table) >= last) return;
  WriteTransaction transaction(database_.get());
  Run("DELETE FROM sqlite_sequence WHERE name = ?", std::array<StoredField, 1>{table});
  Run("INSERT INTO sqlite_sequence (name, seq) VALUES (?, ?)", std::array<StoredField, 2>{table, last});
  transaction.Commit();
}

std::optional<std::string> Maintenance::UnfinishedCopySource() {
  if (!HasTable(kUnfinishedCopy)) return std::nullopt;
  const auto row = Prepare(database_.get(), "SELECT Source FROM " + Quoted(kUnfinishedCopy));
  return Step(row.get()) ? TextAt(row.get(), 0) : std::string();
}

void Maintenance::MarkUnfinishedCopy(const std::string& source) {
  WriteTransaction transaction(database_.get());
  DropParts(database_.get(), Tables());
  Run("CREATE TABLE " + Quoted(kUnfinishedCopy) + " (Source MEMO TEXT)", {});
  Run("INSERT INTO " + Quoted(kUnfinishedCopy) + " (Source) VALUES (?)", std::array<StoredField, 1>{source});
  transaction.Commit();
}

void Maintenance::MarkCopyComplete() {
  CreateMissingParts(database_.get(), Tables());
  Run("DROP TABLE IF EXISTS " + Quoted(kUnfinishedCopy), {});
}

bool Maintenance::HasTable(std::string_view name) {
  const auto row = Prepare(database_.get(), "SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = ?");
  Bind(row.get(), 1, std::string(name));
  return Step(row.get());
}

void Maintenance::Run(std::string_view sql, std::span<const StoredField> values) {
  const auto statement = Prepare(database_.get(), sql);
  int position = 0;
  for (const StoredField& value : values) Bind(statement.get(), ++position, value);
  sqlite::Run(statement.get());
}

}  // namespace orlune::sqlite
