#include "drivers/sqlite/wal_index.h"

#include <bit>

#include <sqlite3.h>

#include "drivers/sqlite/handles.h"

namespace orlune::sqlite {

namespace {

/// The shared memory comes in pieces of this size; the first one begins with two copies of the header.
constexpr int kRegionSize = 32768;
constexpr int kMostAttempts = 8;

bool HasWal(sqlite3* database) {
  if (sqlite3_db_readonly(database, "main") != 0) return false;
  const auto mode = Prepare(database, "PRAGMA journal_mode");
  return Step(mode.get()) && ColumnText(mode.get(), 0) == "wal";
}

/// The byte at offset 12: whether the header was written at all.
bool IsInitialised(const WalHeader& header) {
  return std::bit_cast<std::array<unsigned char, sizeof(WalHeader)>>(header)[12] != 0;
}

}  // namespace

WalIndex::WalIndex(sqlite3* database) {
  if (!HasWal(database)) return;
  // The first read maps the index.
  Run(database, "PRAGMA schema_version");
  sqlite3_file* file = nullptr;
  if (sqlite3_file_control(database, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK) return;
  if (file == nullptr || file->pMethods == nullptr || file->pMethods->iVersion < 2) return;
  void volatile* region = nullptr;
  if (file->pMethods->xShmMap(file, 0, kRegionSize, 0, &region) != SQLITE_OK) return;
  copies_ = static_cast<std::uint64_t*>(const_cast<void*>(region));
}

/// A commit writes the second copy, then the first one; they are read the other way round. So equal copies
/// are complete.
std::optional<WalHeader> WalIndex::Read() const {
  if (copies_ == nullptr) return std::nullopt;
  for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
    const WalHeader first = ReadCopy(0);
    if (first == ReadCopy(1)) return IsInitialised(first) ? std::optional(first) : std::nullopt;
  }
  return std::nullopt;
}

WalHeader WalIndex::ReadCopy(std::size_t number) const {
  WalHeader header;
  std::uint64_t* word = copies_ + number * header.size();
  for (std::uint64_t& read : header) read = std::atomic_ref(*word++).load(std::memory_order_acquire);
  return header;
}

}  // namespace orlune::sqlite
