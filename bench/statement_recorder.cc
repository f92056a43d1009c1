#include "statement_recorder.h"

#include <utility>

namespace orlune::bench {
namespace {

class RecordingConnection : public Connection {
 public:
  RecordingConnection(std::unique_ptr<Connection> inner, std::vector<RecordedStatement>& statements)
      : inner_(std::move(inner)), statements_(statements) {}

  std::unique_ptr<ResultSet> Query(const StatementText& statement) override {
    Record(statement);
    return inner_->Query(statement);
  }
  void Execute(const StatementText& statement) override {
    Record(statement);
    inner_->Execute(statement);
  }
  bool TryExecute(const StatementText& statement) override { return inner_->TryExecute(statement); }
  void Begin() override { inner_->Begin(); }
  void Commit() override { inner_->Commit(); }
  void Rollback() noexcept override { inner_->Rollback(); }

 private:
  void Record(const StatementText& statement) {
    statements_.push_back({std::string(statement.Text), {statement.Values.begin(), statement.Values.end()}});
  }

  std::unique_ptr<Connection> inner_;
  std::vector<RecordedStatement>& statements_;
};

}  // namespace

std::unique_ptr<Connection> StatementRecorder::Open(const std::string& path) {
  return std::make_unique<RecordingConnection>(inner_.Open(path), statements_);
}

}  // namespace orlune::bench
