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

/// The least that a request's statements can cost: the SQL that the driver makes of them, prepared once on a
/// database that is opened as the driver opens it. Used by one thread.
class BareStatements {
 public:
  /// Throws DatabaseError.
  BareStatements(const std::filesystem::path& file, const RegionalSettings& regional,
                 const std::vector<RecordedStatement>& statements);

  /// Gives all statements their values and reads every column of their rows, in one transaction. Returns
  /// how many rows there were. Throws DatabaseError.
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
