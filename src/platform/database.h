#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>

#include "base/civil_time.h"

namespace orlune {

/// A statement failed, a database could not be opened, or a value did not fit its column.
/// `what()` tells the cause for the log; it is never shown in a page.
class DatabaseError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The database cannot be reached, or was lost on the way. Another try, later or from elsewhere, may do.
class DatabaseUnavailable : public DatabaseError {
 public:
  using DatabaseError::DatabaseError;
};

/// Where a value stands in a statement's text, in bytes.
struct ValueSpan {
  std::size_t Begin;
  std::size_t Length;
};

/// A statement in the system's SQL dialect. `Values` are the stretches of `Text` that are data, in ascending
/// order and without overlap; whatever they hold is read as a value, never as SQL. Between apostrophes the
/// whole stretch is part of the literal; elsewhere it is an integer, a ", "-joined list of integers, yes, no
/// or Null, and anything else is an error.
struct StatementText {
  std::string_view Text;
  std::span<const ValueSpan> Values;
};

/// One field of a row: Null, a yes/no, a number, a text, a date, a time of day, or a date with its time. A
/// text is valid until the result set moves on.
using Value = std::variant<std::monostate, bool, std::int64_t, std::string_view, Date, TimeOfDay, DateTime>;

/// The rows of one query, read forward only. Ends with its connection at the latest.
class ResultSet {
 public:
  virtual ~ResultSet() = default;

  /// Moves to the next row, at first to the first; false past the last one. Throws DatabaseError.
  virtual bool Next() = 0;
  /// The position of the column named `name`, whatever its case. Throws DatabaseError when there is none.
  virtual int Column(std::string_view name) const = 0;
  /// The current row's field at a position that `Column` gave.
  virtual Value Get(int column) const = 0;
};

/// One request's connection, given back to its driver when destroyed. Used by one thread at a time.
class Connection {
 public:
  virtual ~Connection() = default;

  /// Tells that the query will probably be run with just this text, before the next write. An engine that is
  /// far away asks it ahead, together with others. Never throws.
  virtual void Announce(const StatementText& /*query*/) {}
  /// Runs a SELECT. Throws DatabaseError.
  virtual std::unique_ptr<ResultSet> Query(const StatementText& statement) = 0;
  /// Runs a statement without rows; outside a transaction it is durable on return. Throws DatabaseError; in a
  /// transaction, a later statement or `Commit` may do so instead, and the transaction can then only be
  /// rolled back.
  virtual void Execute(const StatementText& statement) = 0;
  /// Like `Execute`, but tells by false that the statement raised an error, and then changed nothing.
  virtual bool TryExecute(const StatementText& statement) = 0;
  /// Executes the statements in one transaction of its own, durable on return. When one fails, those before
  /// it stay and those after it are not executed. Throws DatabaseError.
  virtual void ExecuteInOrder(std::span<const StatementText> statements) = 0;

  /// All statements until `Commit` happen together or, after `Rollback`, not at all; from the first query on
  /// nobody else writes. Throws DatabaseError, or lets a later statement do so; not nested.
  virtual void Begin() = 0;
  /// The transaction is durable on return. Throws DatabaseError, and the transaction is then rolled back.
  virtual void Commit() = 0;
  virtual void Rollback() noexcept = 0;
};

/// Opens databases. May be used by several threads at once.
class DatabaseDriver {
 public:
  virtual ~DatabaseDriver() = default;
  /// A connection to the database at `path`, never null. Throws DatabaseError when it is missing or
  /// unreadable.
  virtual std::unique_ptr<Connection> Open(const std::string& path) = 0;
};

}  // namespace orlune
