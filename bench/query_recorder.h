#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/database.h"

namespace orlune::bench {

/// A query that outlives the statement it was sent with.
struct RecordedQuery {
  std::string Text;
  std::vector<ValueSpan> Values;

  operator StatementText() const { return {Text, Values}; }  // NOLINT(google-explicit-constructor)
};

/// Passes everything on to another driver and keeps the queries that go through. Serves one thread and
/// outlives its connections.
class QueryRecorder : public DatabaseDriver {
 public:
  explicit QueryRecorder(DatabaseDriver& inner) : inner_(inner) {}

  std::unique_ptr<Connection> Open(const std::string& path) override;
  const std::vector<RecordedQuery>& Queries() const { return queries_; }

 private:
  DatabaseDriver& inner_;
  std::vector<RecordedQuery> queries_;
};

}  // namespace orlune::bench
