#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <filesystem>
#include <memory>
#include <mutex>

#include "base/regional_settings.h"
#include "drivers/sqlite/database.h"

namespace orlune::sqlite {

/// The database through which everything is written to one file, one transaction at a time, in order of
/// arrival. Transactions that were waiting for each other share one commit (group commit): each is a
/// savepoint that is rolled back alone, and all of them become durable, or fail, together. So the number of
/// transactions a second does not depend on how long the disk takes for a commit. Shared by threads.
class Writer {
 public:
  /// `patience` is how long a transaction waits for others, those of other processes included. `regional`
  /// and `cache`, which belongs to the file, have to outlive the writer.
  Writer(std::filesystem::path file, std::chrono::milliseconds patience, const RegionalSettings& regional,
         FileCache& cache);

  /// Begins a transaction: the calling thread may use `Current` until it ends. Throws DatabaseUnavailable
  /// when the others do not end in time.
  void Begin();
  Database& Current() { return *database_; }
  /// Ends the transaction, which is durable on return. Throws DatabaseError; nothing of it is stored then.
  void Commit();
  /// Ends the transaction, of which nothing is stored.
  void Rollback() noexcept;

 private:
  using Clock = std::chrono::steady_clock;

  struct Waiting {
    std::condition_variable TurnCame;
  };
  /// The transactions that share a commit.
  struct Batch {
    Clock::time_point BeganAt = Clock::now();
    std::size_t Transactions = 0;  // that are to be committed
    bool IsDone = false;
    std::exception_ptr Failure;
    std::condition_variable Done;
  };

  void AwaitTurn(Clock::time_point deadline);
  void BeginTurn(Clock::time_point deadline);
  bool LeaveOpen(const Batch& batch);
  void EndBatch();
  void EndTurn();
  void PassTurn();
  void AwaitCommit(Batch& batch);

  const std::filesystem::path file_;
  const std::chrono::milliseconds patience_;
  const RegionalSettings& regional_;
  FileCache& cache_;

  std::mutex mutex_;
  std::deque<Waiting*> waiting_;  // in order of arrival
  bool isTaken_ = false;
  // Used by whose turn it is.
  std::unique_ptr<Database> database_;
  std::shared_ptr<Batch> batch_;  // while its transaction is open
};

/// A transaction of a writer; rolled back on destruction unless it was committed.
class WriteTurn {
 public:
  /// Throws as `Writer::Begin`.
  explicit WriteTurn(Writer& writer) : writer_(writer) { writer_.Begin(); }
  ~WriteTurn() {
    if (!hasEnded_) writer_.Rollback();
  }
  WriteTurn(const WriteTurn&) = delete;
  WriteTurn& operator=(const WriteTurn&) = delete;

  Database& Current() { return writer_.Current(); }
  /// Throws as `Writer::Commit`.
  void Commit() {
    hasEnded_ = true;
    writer_.Commit();
  }

 private:
  Writer& writer_;
  bool hasEnded_ = false;
};

}  // namespace orlune::sqlite
