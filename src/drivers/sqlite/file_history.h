#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <vector>

#include "drivers/sqlite/handles.h"
#include "drivers/sqlite/wal_index.h"

namespace orlune::sqlite {

/// Tables of one file, a bit for each; from the 64th on tables share the last bit.
using TableSet = std::uint64_t;
constexpr TableSet kAllTables = ~TableSet{0};

/// What is known of one state of a file: for each table, in which state it was last changed.
class FileState {
 public:
  /// The number of the last state until this one in which one of `tables` was changed. When two states give
  /// the same number, these tables hold the same rows in both.
  std::uint64_t LastChange(TableSet tables) const;

 private:
  friend class FileHistory;
  std::array<std::uint64_t, 64> lastChanges_{};
};

/// The last states of one file, by their WAL headers. Shared by threads; a lock is held for some comparisons
/// of headers only.
///
/// Why a result that was kept is never older than the last commit:
/// - A header identifies a state. Every commit and every restart of the log writes one that was not there
///   before, as long as the log exists, and it exists as long as somebody has the file open; `KeepOpen`
///   ensures that. SQLite relies on the same headers for what its connections keep of the file.
/// - A reader knows its state when the header was the same before and after it began to read, since no header
///   comes back. Otherwise it goes without kept results.
/// - A state whose origin is unknown counts as one in which all tables were changed. So whatever other
///   processes commit, in whatever order it is noticed, nothing that was kept serves the state after it.
/// - Only `AddCommit` says that a state differs from another one in some tables alone. Its caller proves that
///   the two enclose its own commit and nothing else (see Database::Commit).
/// - A state is never changed once it has a header. Each one descends from another one by one commit of this
///   process, or has no ancestor. Two states with the same `LastChange` of some tables thus descend from the
///   state of that number by commits that did not change these tables, and hold the same rows there.
class FileHistory {
 public:
  /// While one exists, this process may be between a commit and `AddCommit`.
  class Committing {
   public:
    explicit Committing(FileHistory& history);
    ~Committing();
    Committing(const Committing&) = delete;
    Committing& operator=(const Committing&) = delete;

   private:
    FileHistory& history_;
  };

  /// Opens `file` for as long as the history exists. Throws DatabaseError.
  void KeepOpen(const std::filesystem::path& file, std::chrono::milliseconds busyTimeout);

  /// The state with that header; null when it is unknown but may be the result of a commit that is about to
  /// be added.
  std::shared_ptr<const FileState> StateOf(const WalHeader& header);
  /// The state `after` differs from the state `before` at most in the tables `written`.
  void AddCommit(const WalHeader& before, const WalHeader& after, TableSet written);

  TableSet SetOf(std::span<const std::string> tables);

 private:
  /// Enough for those that a request may still read.
  static constexpr std::size_t kMostStates = 64;
  struct KnownState {
    WalHeader Header{};
    std::shared_ptr<const FileState> State;
  };

  std::shared_ptr<const FileState> Find(const WalHeader& header) const;
  std::shared_ptr<const FileState> Add(const WalHeader& header, FileState state, TableSet changed);

  std::mutex mutex_;
  DatabaseHandle open_;
  std::vector<std::string> tables_;
  std::array<KnownState, kMostStates> states_;
  std::uint64_t lastNumber_ = 0;
  int committing_ = 0;
};

}  // namespace orlune::sqlite
