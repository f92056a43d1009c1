#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <limits>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>

#include "base/civil_time.h"

namespace orlune {

/// A statement failed, a database could not be opened, or a value did not fit its column.
/// `what()` is the cause for the log; it is never shown in a page.
class DatabaseError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The database cannot be reached, the connection was lost, or another writer did not end in time. A retry,
/// later or from another server, may succeed.
class DatabaseUnavailable : public DatabaseError {
 public:
  using DatabaseError::DatabaseError;
};

/// What a connection may be used for.
enum class Access {
  kRead,  ///< queries only; never waits for a writer
  kReadAndWrite,
};

/// A connection with `Access::kRead` was to write; nothing happened. No DatabaseError, so that it reaches who
/// chose the access and can choose again.
class WriteRefused : public std::exception {
 public:
  const char* what() const noexcept override { return "a connection for reading was to write"; }
};

/// The position of a value in a statement's text, in bytes.
struct ValueSpan {
  std::size_t Begin;
  std::size_t Length;
};

/// A statement in the system's SQL dialect. `Values` are the spans of `Text` that are data, in ascending
/// order and without overlap; whatever they contain is parsed as a value, never as SQL. Between apostrophes
/// the whole span is part of the literal; elsewhere it is an integer, a ", "-joined list of integers, yes, no
/// or Null, and anything else is an error.
struct StatementText {
  std::string_view Text;
  std::span<const ValueSpan> Values;
};

/// One field of a row: Null, a yes/no, a number, a text, a date, a time of day, or a date with its time. A
/// text is valid until the result set moves on.
using Value = std::variant<std::monostate, bool, std::int64_t, std::string_view, Date, TimeOfDay, DateTime>;

/// The rows of one query, read forward only. Must not outlive its connection.
class ResultSet {
 public:
  virtual ~ResultSet() = default;

  /// Moves to the next row, the first call to the first row; false past the last one. Throws DatabaseError.
  virtual bool Next() = 0;
  /// The position of the column `name`, ignoring case. Throws DatabaseError when there is none.
  virtual int Column(std::string_view name) const = 0;
  /// The current row's field; `column` is a position from `Column`.
  virtual Value Get(int column) const = 0;
};

/// One request's connection, returned to its driver's pool when destroyed. Used by one thread at a time. With
/// `Access::kRead`, whatever would write throws WriteRefused instead.
class Connection {
 public:
  virtual ~Connection() = default;

  /// A hint that `Query` will probably be called with this very statement before the next write. A driver
  /// with network round trips sends it now and pipelines it with others. Never throws.
  virtual void Prefetch(const StatementText& /*query*/) {}
  /// Runs a SELECT. Throws DatabaseError.
  virtual std::unique_ptr<ResultSet> Query(const StatementText& statement) = 0;
  /// Runs a statement without rows; outside a transaction it is durable on return. Throws DatabaseError. In a
  /// transaction a later statement or `Commit` may throw it instead; the transaction can then only be rolled
  /// back.
  virtual void Execute(const StatementText& statement) = 0;
  /// Like `Execute`, but returns false when the statement failed, and has then changed nothing. Still throws
  /// DatabaseUnavailable.
  virtual bool TryExecute(const StatementText& statement) = 0;
  /// Executes the statements in one transaction of its own, durable on return. When one fails, those before
  /// it stay and those after it are not executed. Throws DatabaseError.
  virtual void ExecuteInOrder(std::span<const StatementText> statements) = 0;

  /// Of the state that is read: a change of the change log that it does not show and whose number is lower
  /// will never be there; its transaction was rolled back. For an engine whose changes are numbered in the
  /// order of their commits it is the highest number. Throws DatabaseError.
  virtual std::int64_t ChangeHorizon() { return std::numeric_limits<std::int64_t>::max(); }

  /// Begins a transaction: all statements until `Commit` take effect together or, after `Rollback`, not at
  /// all; from its first query on it is the only writer. Throws DatabaseError, as a later statement may do in
  /// its place; not nested.
  virtual void Begin() = 0;
  /// The transaction is durable on return. Throws DatabaseError, and the transaction is then rolled back.
  virtual void Commit() = 0;
  virtual void Rollback() noexcept = 0;
};

/// Opens databases. Thread-safe.
class DatabaseDriver {
 public:
  virtual ~DatabaseDriver() = default;
  /// A connection to the database at `path`, never null. Throws DatabaseError when it is missing or
  /// unreadable.
  virtual std::unique_ptr<Connection> Open(const std::string& path) = 0;
};

}  // namespace orlune
