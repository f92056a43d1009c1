#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>

struct sqlite3;

namespace orlune::sqlite {

/// The header of a file's WAL index, which SQLite keeps in memory that all processes share. Each commit
/// writes another one, so it identifies the state of the file.
using WalHeader = std::array<std::uint64_t, 6>;

/// Reads the header of the WAL index.
class WalIndex {
 public:
  /// `database` has to outlive the index. There is no header without a WAL, nor for a file that cannot be
  /// written. Throws DatabaseError.
  explicit WalIndex(sqlite3* database);

  /// The header as the last commit left it; nothing while another one is being written.
  std::optional<WalHeader> Read() const;

 private:
  WalHeader ReadCopy(std::size_t number) const;

  std::uint64_t* copies_ = nullptr;
};

}  // namespace orlune::sqlite
