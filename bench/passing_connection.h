#pragma once

#include <memory>
#include <utility>

#include "platform/database.h"

namespace orlune::bench {

/// Forwards everything to another connection, except `Prefetch`.
class PassingConnection : public Connection {
 public:
  explicit PassingConnection(std::unique_ptr<Connection> inner) : inner_(std::move(inner)) {}

  std::unique_ptr<ResultSet> Query(const StatementText& statement) override {
    return inner_->Query(statement);
  }
  void Execute(const StatementText& statement) override { inner_->Execute(statement); }
  bool TryExecute(const StatementText& statement) override { return inner_->TryExecute(statement); }
  void ExecuteInOrder(std::span<const StatementText> statements) override {
    inner_->ExecuteInOrder(statements);
  }
  void Begin() override { inner_->Begin(); }
  void Commit() override { inner_->Commit(); }
  void Rollback() noexcept override { inner_->Rollback(); }

 private:
  std::unique_ptr<Connection> inner_;
};

/// Another driver, which must outlive this one, without prefetching.
class NonPrefetchingDriver : public DatabaseDriver {
 public:
  explicit NonPrefetchingDriver(DatabaseDriver& inner) : inner_(inner) {}

  std::unique_ptr<Connection> Open(const std::string& path) override {
    return std::make_unique<PassingConnection>(inner_.Open(path));
  }

 private:
  DatabaseDriver& inner_;
};

}  // namespace orlune::bench
