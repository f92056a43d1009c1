#include "statement_recorder.h"

#include <utility>

#include "passing_connection.h"

namespace orlune::bench {
namespace {

class RecordingConnection : public PassingConnection {
 public:
  RecordingConnection(std::unique_ptr<Connection> inner, std::vector<RecordedStatement>& statements)
      : PassingConnection(std::move(inner)), statements_(statements) {}

  std::unique_ptr<ResultSet> Query(const StatementText& statement) override {
    Record(statement);
    return PassingConnection::Query(statement);
  }
  void Execute(const StatementText& statement) override {
    Record(statement);
    PassingConnection::Execute(statement);
  }

 private:
  void Record(const StatementText& statement) {
    statements_.push_back({std::string(statement.Text), {statement.Values.begin(), statement.Values.end()}});
  }

  std::vector<RecordedStatement>& statements_;
};

}  // namespace

std::unique_ptr<Connection> StatementRecorder::Open(const std::string& path) {
  return std::make_unique<RecordingConnection>(inner_.Open(path), statements_);
}

}  // namespace orlune::bench
