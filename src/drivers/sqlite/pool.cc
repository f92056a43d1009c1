#include "drivers/sqlite/pool.h"

namespace orlune::sqlite {

Pool::Pool(std::filesystem::path file, std::chrono::milliseconds busyTimeout, std::size_t mostIdle,
           std::size_t keptBytes, const RegionalSettings& regional)
    : file_(std::move(file)),
      busyTimeout_(busyTimeout),
      mostIdle_(mostIdle),
      regional_(regional),
      cache_(keptBytes),
      writer_(file_, busyTimeout, regional, cache_) {
  idle_.reserve(mostIdle);
}

std::unique_ptr<Database> Pool::Take() {
  std::unique_ptr<Database> database = TakeIdle();
  if (!database) database = std::make_unique<Database>(file_, busyTimeout_, regional_, cache_);
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
