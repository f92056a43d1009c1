#pragma once

#include <functional>
#include <span>
#include <tuple>
#include <utility>
#include <vector>

#include "platform/database.h"
#include "store/statement.h"

namespace orlune {

/// A SELECT, and how its rows are converted to a `Result`. Nothing is sent before `Ask`.
template <class Result>
class Query {
 public:
  using Reader = std::function<Result(ResultSet& rows)>;

  /// A query that is never sent; its result is an empty `Result`.
  Query() = default;
  Query(Statement statement, Reader read) : statement_(std::move(statement)), read_(std::move(read)) {}

  void Prefetch(Connection& database) const {
    if (read_) database.Prefetch(statement_);
  }
  /// Throws DatabaseError.
  Result Run(Connection& database) const { return read_ ? read_(*database.Query(statement_)) : Result{}; }

 private:
  Statement statement_;
  Reader read_;
};

/// Runs one query and returns its result. Throws DatabaseError.
template <class Result>
Result Ask(Connection& database, const Query<Result>& query) {
  return query.Run(database);
}

/// Any number of queries of one type, run like one; the results are in the order of the queries.
template <class Result>
class Queries {
 public:
  explicit Queries(std::span<const Query<Result>> queries) : queries_(queries) {}

  void Prefetch(Connection& database) const {
    for (const Query<Result>& query : queries_) query.Prefetch(database);
  }
  /// Throws DatabaseError.
  std::vector<Result> Run(Connection& database) const {
    std::vector<Result> answers;
    answers.reserve(queries_.size());
    for (const Query<Result>& query : queries_) answers.push_back(query.Run(database));
    return answers;
  }

 private:
  std::span<const Query<Result>> queries_;
};

/// Runs several queries, pipelined where the driver can, and returns their results. Throws DatabaseError.
template <class... Asked>
requires(sizeof...(Asked) > 1) auto Ask(Connection& database, const Asked&... queries) {
  (queries.Prefetch(database), ...);
  return std::tuple<decltype(queries.Run(database))...>{queries.Run(database)...};
}

/// The same for any number of queries of one type.
template <class Result>
std::vector<Result> AskAll(Connection& database, std::span<const Query<Result>> queries) {
  const Queries<Result> all(queries);
  all.Prefetch(database);
  return all.Run(database);
}

}  // namespace orlune
