#include "drivers/sqlite/pool.h"

#include <algorithm>

namespace orlune::sqlite {
namespace {

/// Nobody has to wait to read from a log, except while a file is recovered, locked exclusively or lacks an
/// index; threads that serve others must not do so for long.
constexpr std::chrono::milliseconds kReadPatience{500};

}  // namespace

Pool::Pool(std::filesystem::path file, std::chrono::milliseconds busyTimeout, std::size_t mostIdle,
           std::size_t keptBytes, const RegionalSettings& regional)
    : file_(std::move(file)),
      readPatience_(std::min(busyTimeout, kReadPatience)),
      mostIdle_(mostIdle),
      regional_(regional),
      cache_(keptBytes),
      writer_(file_, busyTimeout, regional, cache_) {
  idle_.reserve(mostIdle);
}

std::unique_ptr<Database> Pool::Take() {
  std::unique_ptr<Database> database = TakeIdle();
  if (!database) database = std::make_unique<Database>(file_, readPatience_, regional_, cache_);
  database->EnsureReading();
  return database;
}

void Pool::GiveBack(std::unique_ptr<Database> database) noexcept {
  if (!database->Reset()) return;
  const std::lock_guard lock(mutex_);
  if (idle_.size() < mostIdle_) idle_.push_back(std::move(database));
}

std::unique_ptr<Database> Pool::TakeIdle() {
  const std::lock_guard lock(mutex_);
  if (idle_.empty()) return nullptr;
  std::unique_ptr<Database> database = std::move(idle_.back());
  idle_.pop_back();
  return database;
}

}  // namespace orlune::sqlite
