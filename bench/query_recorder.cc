#include "query_recorder.h"

#include <utility>

namespace orlune::bench {
namespace {

class RecordingConnection : public Connection {
 public:
  RecordingConnection(std::unique_ptr<Connection> inner, std::vector<RecordedQuery>& queries)
      : inner_(std::move(inner)), queries_(queries) {}

  std::unique_ptr<ResultSet> Query(const StatementText& statement) override {
    queries_.push_back({std::string(statement.Text), {statement.Values.begin(), statement.Values.end()}});
    return inner_->Query(statement);
  }
  void Execute(const StatementText& statement) override { inner_->Execute(statement); }
  bool TryExecute(const StatementText& statement) override { return inner_->TryExecute(statement); }
  void Begin() override { inner_->Begin(); }
  void Commit() override { inner_->Commit(); }
  void Rollback() noexcept override { inner_->Rollback(); }

 private:
  std::unique_ptr<Connection> inner_;
  std::vector<RecordedQuery>& queries_;
};

}  // namespace

std::unique_ptr<Connection> QueryRecorder::Open(const std::string& path) {
  return std::make_unique<RecordingConnection>(inner_.Open(path), queries_);
}

}  // namespace orlune::bench
