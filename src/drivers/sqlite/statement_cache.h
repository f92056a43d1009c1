#pragma once

#include <cstddef>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "drivers/access_sql/translation.h"
#include "drivers/sqlite/handles.h"

namespace orlune::sqlite {

/// A translated statement with those prepared for it that are not running.
struct CachedStatement {
  access_sql::Translation Translation;
  std::vector<StatementHandle> Idle;
};

/// The statements of one database by their shape keys; keeps those used last.
class StatementCache {
 public:
  /// The statement of that shape, or null. It becomes the one used last.
  std::shared_ptr<CachedStatement> Find(std::string_view key);
  void Add(std::string key, std::shared_ptr<CachedStatement> statement);
  void Clear();

 private:
  struct Entry {
    std::string Key;
    std::shared_ptr<CachedStatement> Statement;
  };

  std::list<Entry> entries_;  // the one used last first
  std::unordered_map<std::string_view, std::list<Entry>::iterator> byKey_;
};

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
