#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "base/regional_settings.h"
#include "drivers/postgresql/database.h"
#include "drivers/postgresql/kept_replies.h"
#include "drivers/postgresql/options.h"

namespace orlune::postgresql {

/// The connections to one database, at most a fixed number of them. Shared by threads.
class Pool {
 public:
  /// `regional` has to outlive the pool.
  Pool(std::string address, const PostgresqlOptions& options, const RegionalSettings& regional);

  /// A connection for a request; waits for one when all are in use. Throws DatabaseError.
  std::unique_ptr<Database> Take();
  void GiveBack(std::unique_ptr<Database> database) noexcept;
  /// For who has room for a connection already, such as one that was lost. Throws DatabaseError.
  std::unique_ptr<Database> TakeIdleOrConnect();

 private:
  void Enter();
  void Leave() noexcept;
  std::unique_ptr<Database> TakeIdle();
  std::unique_ptr<Database> Connect();

  const std::string address_;
  const PostgresqlOptions options_;
  const RegionalSettings& regional_;

  KeptReplies kept_;
  std::mutex mutex_;
  std::condition_variable isFree_;
  std::vector<std::unique_ptr<Database>> idle_;  // the one used last at the back
  std::size_t used_ = 0;
  std::chrono::steady_clock::time_point failedAt_;
  std::string failure_;
};

/// A connection taken from a pool; goes back when destroyed.
class Lease {
 public:
  /// Throws DatabaseError.
  explicit Lease(std::shared_ptr<Pool> pool) : pool_(std::move(pool)), database_(pool_->Take()) {}
  ~Lease() { pool_->GiveBack(std::move(database_)); }
  Lease(const Lease&) = delete;
  Lease& operator=(const Lease&) = delete;

  Database& Leased() { return *database_; }
  /// Replaces a lost connection. Throws DatabaseError.
  void Reconnect() { database_ = pool_->TakeIdleOrConnect(); }

 private:
  std::shared_ptr<Pool> pool_;
  std::unique_ptr<Database> database_;
};

}  // namespace orlune::postgresql
