#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "drivers/engines/database_engine.h"

namespace orlune::testing {

/// Counts writes, and fails at one of them.
class Interruption {
 public:
  /// Fails at the write number `at`, counted from 0: before it happens, or right after.
  Interruption(int at, bool isAfter) : at_(at), isAfter_(isAfter) {}

  template <class Action>
  void Write(Action action) {
    const bool isNow = writes_++ == at_;
    if (isNow && !isAfter_) throw DatabaseError("interrupted");
    action();
    if (isNow) throw DatabaseError("interrupted");
  }
  int Writes() const { return writes_; }

 private:
  int at_;
  bool isAfter_;
  int writes_ = 0;
};

class InterruptedMaintenance : public DatabaseMaintenance {
 public:
  InterruptedMaintenance(std::unique_ptr<DatabaseMaintenance> inner, Interruption& interruption)
      : inner_(std::move(inner)), interruption_(interruption) {}

  dialect::Catalogue Tables() override { return inner_->Tables(); }
  std::vector<std::string> MissingIndexes() override { return inner_->MissingIndexes(); }
  std::vector<std::string> MissingTriggers() override { return inner_->MissingTriggers(); }
  std::vector<std::string> Damages() override { return inner_->Damages(); }
  std::int64_t RowCount(const std::string& table) override { return inner_->RowCount(table); }
  std::optional<std::int64_t> HighestNumber(const dialect::Table& table) override {
    return inner_->HighestNumber(table);
  }
  std::vector<StoredRow> Rows(const dialect::Table& table, std::int64_t after, std::size_t most) override {
    return inner_->Rows(table, after, most);
  }
  void Insert(const dialect::Table& table, std::span<const StoredRow> rows) override {
    interruption_.Write([&] { inner_->Insert(table, rows); });
  }
  std::int64_t LastCounter(const std::string& table) override { return inner_->LastCounter(table); }
  void RaiseCounter(const std::string& table, std::int64_t last) override {
    interruption_.Write([&] { inner_->RaiseCounter(table, last); });
  }
  std::optional<std::string> UnfinishedCopySource() override { return inner_->UnfinishedCopySource(); }
  void MarkUnfinishedCopy(const std::string& source) override {
    interruption_.Write([&] { inner_->MarkUnfinishedCopy(source); });
  }
  void MarkCopyComplete() override {
    interruption_.Write([&] { inner_->MarkCopyComplete(); });
  }

 private:
  std::unique_ptr<DatabaseMaintenance> inner_;
  Interruption& interruption_;
};

/// An engine whose writing is interrupted.
class InterruptedEngine : public DatabaseEngine {
 public:
  InterruptedEngine(DatabaseEngine& inner, Interruption& interruption)
      : inner_(inner), interruption_(interruption) {}

  std::unique_ptr<DatabaseMaintenance> OpenToRead(const DatabaseAddress& address) override {
    return inner_.OpenToRead(address);
  }
  std::unique_ptr<DatabaseMaintenance> OpenToFill(const DatabaseAddress& address) override {
    std::unique_ptr<DatabaseMaintenance> opened;
    interruption_.Write([&] { opened = inner_.OpenToFill(address); });
    return std::make_unique<InterruptedMaintenance>(std::move(opened), interruption_);
  }
  void Create(const DatabaseAddress& address, const std::function<void(Connection&)>& fill) override {
    inner_.Create(address, fill);
  }
  std::unique_ptr<Connection> Connect(const DatabaseAddress& address, Access access) override {
    std::unique_ptr<Connection> connection;
    interruption_.Write([&] { connection = inner_.Connect(address, access); });
    return connection;
  }

 private:
  DatabaseEngine& inner_;
  Interruption& interruption_;
};

}  // namespace orlune::testing
