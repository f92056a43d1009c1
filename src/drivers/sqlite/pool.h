#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "base/regional_settings.h"
#include "drivers/sqlite/database.h"
#include "drivers/sqlite/writer.h"

namespace orlune::sqlite {

/// The databases of one file: idle ones to read from, and the one to write to. Shared by threads.
class Pool {
 public:
  /// Keeps up to `mostIdle` databases open, and up to `keptBytes` of results. `regional` has to outlive the
  /// pool.
  Pool(std::filesystem::path file, std::chrono::milliseconds busyTimeout, std::size_t mostIdle,
       std::size_t keptBytes, const RegionalSettings& regional);

  /// A database that has begun to read. Throws DatabaseError.
  std::unique_ptr<Database> Take();
  void GiveBack(std::unique_ptr<Database> database) noexcept;
  sqlite::Writer& Writer() { return writer_; }

 private:
  std::unique_ptr<Database> TakeIdle();

  const std::filesystem::path file_;
  const std::chrono::milliseconds readPatience_;
  const std::size_t mostIdle_;
  const RegionalSettings& regional_;
  FileCache cache_;
  sqlite::Writer writer_;

  std::mutex mutex_;
  std::vector<std::unique_ptr<Database>> idle_;
};

/// A database taken from a pool; goes back when destroyed.
class Lease {
 public:
  /// Throws DatabaseError.
  explicit Lease(std::shared_ptr<Pool> pool) : pool_(std::move(pool)), database_(pool_->Take()) {}
  ~Lease() { pool_->GiveBack(std::move(database_)); }
  Lease(const Lease&) = delete;
  Lease& operator=(const Lease&) = delete;

  Database& Leased() { return *database_; }
  const std::shared_ptr<Pool>& Origin() const { return pool_; }

 private:
  std::shared_ptr<Pool> pool_;
  std::unique_ptr<Database> database_;
};

}  // namespace orlune::sqlite
