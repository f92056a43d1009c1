#include "drivers/sqlite/writer.h"

#include <algorithm>
#include <utility>

namespace orlune::sqlite {
namespace {

// What a commit is shared by at most: it comes late for the first of them.
constexpr std::size_t kMostTransactions = 64;
constexpr std::chrono::milliseconds kLongestBatch{10};

}  // namespace

Writer::Writer(std::filesystem::path file, std::chrono::milliseconds patience,
               const RegionalSettings& regional, FileCache& cache)
    : file_(std::move(file)), patience_(patience), regional_(regional), cache_(cache) {}

void Writer::Begin() {
  const auto deadline = Clock::now() + patience_;
  AwaitTurn(deadline);
  try {
    BeginTurn(deadline);
  } catch (...) {
    EndTurn();
    throw;
  }
}

void Writer::Commit() {
  try {
    database_->ReleaseSavepoint();
  } catch (...) {
    Rollback();
    throw;
  }
  const std::shared_ptr<Batch> batch = batch_;
  ++batch->Transactions;
  EndTurn();
  AwaitCommit(*batch);
}

void Writer::Rollback() noexcept {
  database_->RollbackToSavepoint();
  EndTurn();
}

void Writer::AwaitTurn(Clock::time_point deadline) {
  Waiting self;
  std::unique_lock lock(mutex_);
  waiting_.push_back(&self);
  const auto isMine = [&] { return !isTaken_ && waiting_.front() == &self; };
  const bool hasTurn = self.TurnCame.wait_until(lock, deadline, isMine);
  std::erase(waiting_, &self);
  if (!hasTurn) throw DatabaseUnavailable("other writers did not end in time");
  isTaken_ = true;
}

void Writer::BeginTurn(Clock::time_point deadline) {
  if (!database_) database_ = std::make_unique<Database>(file_, patience_, regional_, cache_);
  if (!batch_) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    database_->BeginTransaction(std::max(left, std::chrono::milliseconds(1)));
    batch_ = std::make_shared<Batch>();
  }
  database_->SetSavepoint();
}

/// Whether the next transaction shares the commit; then it has the turn.
bool Writer::LeaveOpen(const Batch& batch) {
  const std::lock_guard lock(mutex_);
  const bool isShared = !waiting_.empty() && batch.Transactions > 0 &&
                        batch.Transactions < kMostTransactions &&
                        Clock::now() < batch.BeganAt + kLongestBatch;
  if (isShared) PassTurn();
  return isShared;
}

void Writer::EndTurn() {
  if (batch_) {
    if (database_->IsTransactionOpen() && LeaveOpen(*batch_)) return;
    EndBatch();
  }
  const std::lock_guard lock(mutex_);
  PassTurn();
}

/// The threads that wait for the commit learn how it went.
void Writer::EndBatch() {
  const std::shared_ptr<Batch> batch = std::exchange(batch_, nullptr);
  std::exception_ptr failure;
  try {
    if (batch->Transactions > 0) database_->Commit();
  } catch (...) {
    failure = std::current_exception();
  }
  if (!database_->Reset()) database_ = nullptr;
  const std::lock_guard lock(mutex_);
  batch->IsDone = true;
  batch->Failure = failure;
  batch->Done.notify_all();
}

// Whoever is the first of those that wait takes the turn, even at the very end of its patience.
void Writer::PassTurn() {
  isTaken_ = false;
  if (!waiting_.empty()) waiting_.front()->TurnCame.notify_one();
}

void Writer::AwaitCommit(Batch& batch) {
  std::unique_lock lock(mutex_);
  batch.Done.wait(lock, [&batch] { return batch.IsDone; });
  if (batch.Failure) std::rethrow_exception(batch.Failure);
}

}  // namespace orlune::sqlite
