#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/database.h"

namespace orlune::bench {

/// A copy of a statement.
struct RecordedStatement {
  std::string Text;
  std::vector<ValueSpan> Values;

  operator StatementText() const { return {Text, Values}; }  // NOLINT(google-explicit-constructor)
};

/// Forwards everything to another driver and records the statements of `Query` and `Execute`. Not
/// thread-safe; must outlive its connections.
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
