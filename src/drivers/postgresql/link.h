#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <span>
#include <string>

#include "drivers/postgresql/options.h"

struct pg_conn;
struct pg_result;

namespace orlune::postgresql {

struct CloseLink {
  void operator()(pg_conn* connection) const noexcept;
};
struct ClearResult {
  void operator()(pg_result* result) const noexcept;
};
using ResultHandle = std::unique_ptr<pg_result, ClearResult>;

/// The reply to one command, once it is known.
struct Reply {
  enum class State { kAwaited, kDone, kFailed };
  State Now = State::kAwaited;
  ResultHandle Result;   ///< when done
  std::string Error;     ///< when failed, also when an earlier command of the batch did
  std::string SqlState;  ///< of the error, five characters; "" when the connection was lost
};
using ReplyPtr = std::shared_ptr<Reply>;

/// Throws DatabaseUnavailable when the server went away, else DatabaseError.
[[noreturn]] void ThrowFailure(const Reply& reply);

/// One value of a prepared statement, in PostgreSQL's text form; null for Null.
using Parameters = std::span<const char* const>;

/// One connection to a server, on which commands are sent ahead of their replies. The commands up to a `Mark`
/// are a batch: when one fails, those after it are not run. Outside of BEGIN and COMMIT it is one
/// transaction. Used by one thread at a time.
class Link {
 public:
  /// Connects. Throws DatabaseError, whose text does not show the password.
  Link(const std::string& address, const PostgresqlOptions& options);

  ReplyPtr Prepare(const std::string& name, const std::string& sql, std::span<const unsigned> types);
  ReplyPtr RunPrepared(const std::string& name, Parameters parameters);
  ReplyPtr Run(const char* sql);
  /// Ends the batch. Nothing is waited for.
  void Mark();
  /// Begins a batch that waiting does not end, only `Mark`.
  void BeginLongBatch();
  /// Sends what is buffered. Nothing is waited for.
  void Flush();

  /// Waits for `reply` and all before it. At most one round trip. Ends the batch, unless that is a long one.
  void Await(const Reply& reply);
  /// Like `Await`, and throws DatabaseError when the command failed.
  const ResultHandle& Require(const Reply& reply);

  /// False when the connection is known to be lost; the server is not asked.
  bool IsAlive();
  /// Whether a notification arrived since the last call.
  bool TakeNotification();
  int ServerVersion() const;  ///< such as 150018 for 15.18
  std::string ServerEncoding() const;

 private:
  struct Awaited {
    ReplyPtr Command;  // null for a mark
  };

  ReplyPtr Queue(bool isSent);
  void RequestReplies();
  void ReadNext();
  void ReadReply(Reply& reply);
  ResultHandle WaitForResult();
  void Fail(Reply& reply, pg_result* result);
  void Lose(const std::string& cause);

  std::unique_ptr<pg_conn, CloseLink> connection_;
  std::chrono::milliseconds replyTimeout_;
  std::deque<Awaited> awaited_;
  bool hasOpenBatch_ = false;
  bool isLongBatch_ = false;
  bool hasUnrequested_ = false;  // commands whose replies the server may hold back until the end of the batch
  std::string batchError_;
  std::string batchSqlState_;
};

}  // namespace orlune::postgresql
