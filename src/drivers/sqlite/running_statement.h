#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "drivers/dialect/statement_cache.h"
#include "drivers/dialect/translation.h"
#include "drivers/sqlite/file_history.h"
#include "drivers/sqlite/handles.h"

namespace orlune::sqlite {

/// A translated statement with those prepared for it that are not running.
struct CachedStatement {
  dialect::Translation Translation;
  TableSet Tables = kAllTables;  ///< that it reads or changes
  std::vector<StatementHandle> Idle;
};

using StatementCache = dialect::StatementCache<CachedStatement>;

/// A prepared statement while it runs; goes back to its cached statement, reset, when destroyed. Its database
/// must outlive it.
class RunningStatement {
 public:
  explicit RunningStatement(std::shared_ptr<CachedStatement> origin, StatementHandle handle)
      : origin_(std::move(origin)), handle_(std::move(handle)) {}
  ~RunningStatement();
  RunningStatement(RunningStatement&&) = default;
  RunningStatement& operator=(RunningStatement&&) = delete;
  RunningStatement(const RunningStatement&) = delete;
  RunningStatement& operator=(const RunningStatement&) = delete;

  sqlite3_stmt* Handle() const { return handle_.get(); }
  const std::shared_ptr<CachedStatement>& Origin() const { return origin_; }

 private:
  std::shared_ptr<CachedStatement> origin_;
  StatementHandle handle_;
};

}  // namespace orlune::sqlite
