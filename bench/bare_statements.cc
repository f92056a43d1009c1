#include "bare_statements.h"

#include <sqlite3.h>

#include "drivers/dialect/evaluation.h"
#include "drivers/sqlite/database.h"

namespace orlune::bench {
namespace {

constexpr std::chrono::milliseconds kBusyTimeout{5000};

std::int64_t ReadField(sqlite3_stmt* row, int column) {
  switch (sqlite3_column_type(row, column)) {
    case SQLITE_NULL:
      return 0;
    case SQLITE_INTEGER:
      return sqlite3_column_int64(row, column);
    default:
      return static_cast<std::int64_t>(sqlite::ColumnText(row, column).size());
  }
}

}  // namespace

BareStatements::BareStatements(const std::filesystem::path& file, const RegionalSettings& regional,
                               const std::vector<RecordedStatement>& statements)
    : database_(sqlite::OpenExisting(file, kBusyTimeout)),
      begin_(sqlite::Prepare(database_.get(), "BEGIN DEFERRED")),
      commit_(sqlite::Prepare(database_.get(), "COMMIT")) {
  sqlite::FileCache unused(0);
  sqlite::Database translator(file, kBusyTimeout, regional, unused);
  translator.EnsureReading();
  std::string scratch;
  for (const RecordedStatement& statement : statements) {
    const dialect::Translation& translation = translator.Translated(statement)->Translation;
    Prepared& added = statements_.emplace_back();
    added.Handle = sqlite::Prepare(database_.get(), translation.Sql);
    for (const dialect::Parameter& parameter : translation.Parameters) {
      const dialect::StoredValue value =
          dialect::Evaluate(parameter.Source, parameter.Target, statement, regional, scratch);
      if (const auto* text = std::get_if<std::string_view>(&value)) {
        added.Values.emplace_back(std::string(*text));
      } else if (const auto* number = std::get_if<std::int64_t>(&value)) {
        added.Values.emplace_back(*number);
      } else {
        added.Values.emplace_back();
      }
    }
  }
}

std::size_t BareStatements::Run() {
  std::size_t rows = 0;
  sqlite::Run(begin_.get());
  for (const Prepared& statement : statements_) {
    Bind(statement);
    rows += ReadRows(statement.Handle.get());
  }
  sqlite::Run(commit_.get());
  return rows;
}

void BareStatements::Bind(const Prepared& statement) {
  int position = 0;
  for (const BoundValue& value : statement.Values) {
    ++position;
    if (const auto* text = std::get_if<std::string>(&value)) {
      sqlite3_bind_text64(statement.Handle.get(), position, text->data(), text->size(), SQLITE_STATIC,
                          SQLITE_UTF8);
    } else if (const auto* number = std::get_if<std::int64_t>(&value)) {
      sqlite3_bind_int64(statement.Handle.get(), position, *number);
    } else {
      sqlite3_bind_null(statement.Handle.get(), position);
    }
  }
}

std::size_t BareStatements::ReadRows(sqlite3_stmt* statement) {
  const int columnCount = sqlite3_column_count(statement);
  std::size_t rows = 0;
  [[maybe_unused]] volatile std::int64_t read = 0;
  for (; sqlite::Step(statement); ++rows) {
    for (int column = 0; column < columnCount; ++column) read = ReadField(statement, column);
  }
  sqlite3_reset(statement);
  return rows;
}

}  // namespace orlune::bench
