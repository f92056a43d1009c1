#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <string>
#include <variant>
#include <vector>

#include "base/regional_settings.h"
#include "drivers/sqlite/handles.h"
#include "statement_recorder.h"

namespace orlune::bench {

/// The baseline of a request's statements: the SQL that the driver generates for them, prepared once on a
/// database with the driver's settings. Not thread-safe.
class BareStatements {
 public:
  /// Throws DatabaseError.
  BareStatements(const std::filesystem::path& file, const RegionalSettings& regional,
                 const std::vector<RecordedStatement>& statements);

  /// Binds the values of all statements and reads every column of their rows, in one transaction. Returns the
  /// number of rows. Throws DatabaseError.
  std::size_t Run();

 private:
  using BoundValue = std::variant<std::monostate, std::int64_t, std::string>;
  struct Prepared {
    sqlite::StatementHandle Handle;
    std::vector<BoundValue> Values;
  };

  static void Bind(const Prepared& statement);
  static std::size_t ReadRows(sqlite3_stmt* statement);

  sqlite::DatabaseHandle database_;
  sqlite::StatementHandle begin_;
  sqlite::StatementHandle commit_;
  std::vector<Prepared> statements_;
};

}  // namespace orlune::bench
