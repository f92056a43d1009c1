#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/database.h"

namespace orlune::bench {

/// A statement that outlives the request that sent it.
struct RecordedStatement {
  std::string Text;
  std::vector<ValueSpan> Values;

  operator StatementText() const { return {Text, Values}; }  // NOLINT(google-explicit-constructor)
};

/// Passes everything on to another driver and keeps the statements that go through, except
/// those that may fail. Serves one thread and
/// outlives its connections.
class StatementRecorder : public DatabaseDriver {
 public:
  explicit StatementRecorder(DatabaseDriver& inner) : inner_(inner) {}

  std::unique_ptr<Connection> Open(const std::string& path) override;
  const std::vector<RecordedStatement>& Statements() const { return statements_; }

 private:
  DatabaseDriver& inner_;
  std::vector<RecordedStatement> statements_;
};

}  // namespace orlune::bench
