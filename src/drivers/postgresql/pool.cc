#include "drivers/postgresql/pool.h"

#include <fmt/format.h>

#include "platform/database.h"

namespace orlune::postgresql {

namespace {

/// After a failure no connection is tried: waiting for an unreachable host would block every thread.
constexpr std::chrono::milliseconds kRetryInterval{500};

}  // namespace

Pool::Pool(std::string address, const PostgresqlOptions& options, const RegionalSettings& regional)
    : address_(std::move(address)), options_(options), regional_(regional), kept_(options.KeptBytes) {
  idle_.reserve(options.MostConnections);
}

std::unique_ptr<Database> Pool::Take() {
  Enter();
  try {
    return TakeIdleOrConnect();
  } catch (const DatabaseError&) {
    Leave();
    throw;
  }
}

std::unique_ptr<Database> Pool::TakeIdleOrConnect() {
  while (std::unique_ptr<Database> idle = TakeIdle()) {
    if (idle->Renew()) return idle;
  }
  return Connect();
}

void Pool::GiveBack(std::unique_ptr<Database> database) noexcept {
  database->Reset();
  {
    const std::lock_guard lock(mutex_);
    idle_.push_back(std::move(database));
  }
  Leave();
}

/// Reserves one of the connections that the pool may have.
void Pool::Enter() {
  std::unique_lock lock(mutex_);
  const auto hasRoom = [this] { return used_ < options_.MostConnections; };
  if (!isFree_.wait_for(lock, options_.PoolWait, hasRoom))
    throw DatabaseUnavailable(
        fmt::format("all {} connections are in use; raise database_connections", options_.MostConnections));
  ++used_;
}

void Pool::Leave() noexcept {
  const std::lock_guard lock(mutex_);
  --used_;
  isFree_.notify_one();
}

std::unique_ptr<Database> Pool::TakeIdle() {
  const std::lock_guard lock(mutex_);
  if (idle_.empty()) return nullptr;
  std::unique_ptr<Database> database = std::move(idle_.back());
  idle_.pop_back();
  return database;
}

std::unique_ptr<Database> Pool::Connect() {
  {
    const std::lock_guard lock(mutex_);
    if (!failure_.empty() && std::chrono::steady_clock::now() < failedAt_ + kRetryInterval)
      throw DatabaseUnavailable(failure_);
  }
  std::string failure;
  try {
    return std::make_unique<Database>(address_, options_, regional_, kept_);
  } catch (const DatabaseError& error) {
    failure = error.what();
  }
  const std::lock_guard lock(mutex_);
  failedAt_ = std::chrono::steady_clock::now();
  failure_ = failure;
  throw DatabaseUnavailable(failure);
}

}  // namespace orlune::postgresql
