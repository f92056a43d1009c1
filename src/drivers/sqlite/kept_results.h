#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

#include "drivers/sqlite/file_history.h"
#include "drivers/sqlite/row_block.h"

namespace orlune::sqlite {

/// The rows of one file's queries, valid until a table that a query reads is changed. Those used last are
/// kept. Shared by threads.
class KeptResults {
 public:
  /// Keeps up to `mostBytes` of memory.
  explicit KeptResults(std::size_t mostBytes) : mostBytes_(mostBytes) {}

  /// The rows of the query `key` in `state`, or null.
  std::shared_ptr<const RowBlock> Find(std::string_view key, const FileState& state);
  /// Keeps the rows of the query `key`, which reads `tables`, as they are in `state`.
  void Keep(std::string_view key, TableSet tables, const FileState& state,
            std::shared_ptr<const RowBlock> rows);

  /// How much memory one result may take to be kept.
  std::size_t MostBytesOfOne() const { return mostBytes_ / 64; }
  /// The memory that is used.
  std::size_t Bytes() const;

 private:
  struct Entry {
    std::string Key;
    TableSet Tables;
    std::uint64_t LastChange;  // of the tables
    std::shared_ptr<const RowBlock> Rows;
  };
  using Entries = std::list<Entry>;

  static std::size_t BytesOf(const Entry& entry);
  void Remove(Entries::iterator entry);

  const std::size_t mostBytes_;
  mutable std::mutex mutex_;
  Entries entries_;  // the one used last first
  std::unordered_map<std::string_view, Entries::iterator> byKey_;
  std::size_t bytes_ = 0;
};

}  // namespace orlune::sqlite
