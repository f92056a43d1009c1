#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/regional_settings.h"
#include "drivers/dialect/catalogue.h"
#include "drivers/postgresql/cached_statement.h"
#include "drivers/postgresql/kept_replies.h"
#include "drivers/postgresql/link.h"
#include "drivers/postgresql/options.h"
#include "drivers/postgresql/parameter_texts.h"
#include "platform/database.h"

namespace orlune::postgresql {

/// One connection to a calendar's database, with what is remembered about it from request to request: its
/// tables and its prepared statements. Commands are sent ahead; a reply is waited for when it is needed. Used
/// by one thread at a time.
class Database {
 public:
  /// Connects, and makes indexes and triggers that are missing. `regional` and `kept` have to outlive the
  /// database. Throws DatabaseError.
  Database(const std::string& address, const PostgresqlOptions& options, const RegionalSettings& regional,
           KeptReplies& kept);

  /// Ready for another request: forgets the tables when another node changed them. False when the connection
  /// is lost. Asks the server only to read the tables again.
  bool Renew();

  /// False when the connection is known to be lost; the server is not asked.
  bool IsAlive() { return link_.IsAlive(); }

  /// Begins to read from one state of the database, unless reading or in a transaction.
  void EnsureReading();
  void EndReading();
  /// The reply to the query in the newest state that is known, or null; always null once
  /// something was written in the request.
  KeptReplyPtr FindKept(const StatementText& query);
  /// Whether the state that is read is the one of `kept`. Asks the server at the first call. Throws
  /// DatabaseError.
  bool Reads(const KeptReply& kept);
  /// Keeps a reply of the state that is read.
  void Keep(const StatementText& query, std::shared_ptr<const CachedStatement> translated, ReplyPtr reply);
  /// See `Connection::ChangeHorizon`.
  std::int64_t ChangeHorizon();
  /// Begins a transaction, as the only one that writes.
  void BeginTransaction();
  bool IsInTransaction() const { return state_ == State::kTransaction; }
  /// Throws DatabaseError, with the transaction rolled back.
  void Commit();
  void Rollback() noexcept;
  /// Makes it idle, without waiting.
  void Reset() noexcept;

  /// The statement translated for the current tables. Throws DatabaseError.
  std::shared_ptr<CachedStatement> Translated(const StatementText& statement);
  /// Sends a translated statement with the values of `statement`.
  ReplyPtr Start(CachedStatement& translated, const StatementText& statement);
  /// Waits for a reply. Throws DatabaseError for its failure, or for that of a statement of the transaction
  /// before it.
  void Require(const Reply& reply);

  /// Runs a statement by itself, durable on return. Throws DatabaseError.
  void RunAlone(CachedStatement& translated, const StatementText& statement);
  /// In a transaction: sends the statement, whose failure surfaces later, in `Commit` at the latest.
  void RunInTransaction(CachedStatement& translated, const StatementText& statement);
  /// In a transaction: awaits the statement, whose failure leaves the transaction unchanged.
  void RunWithSavepoint(CachedStatement& translated, const StatementText& statement);

 private:
  enum class State { kIdle, kReading, kTransaction };

  dialect::Translation Translate(const dialect::Statement& statement);
  ReplyPtr Send(CachedStatement& translated);
  void AskForSnapshot();
  std::uint64_t ReadState();
  void TellSchemaChange();
  void SetUpChangedTables();
  void ForgetTables();
  void ReadTables();
  std::string NewName();
  void Deallocate(const std::string& name);
  void RequireUnconfirmed();

  const RegionalSettings& regional_;
  KeptReplies& kept_;
  Link link_;
  State state_ = State::kIdle;
  /// Which state of the database is read.
  struct Reading {
    ReplyPtr Snapshot;                   // null when nothing is to be kept
    std::optional<std::uint64_t> State;  // its number, once the reply was looked at
    std::shared_ptr<const std::string> Source;
    std::uint64_t Connections = 0;
  };
  Reading reading_;
  std::string snapshotName_;   // of the prepared query for it
  ReplyPtr preparedSnapshot_;  // the reply to its preparation; null before
  dialect::Catalogue tables_;
  std::shared_ptr<const std::string> source_;
  bool knowsTables_ = false;
  bool hasReadTables_ = false;     // for the current request
  bool hasChangedTables_ = false;  // in the current transaction
  bool hasWritten_ = false;        // in the current request: what it reads is soon replaced, and not kept
  StatementCache cache_;
  /// A command of the transaction whose reply has not been looked at.
  struct Unconfirmed {
    ReplyPtr Reply;
    std::string Statement;  ///< without its values; "" for what is ours
  };
  std::vector<Unconfirmed> unconfirmed_;
  std::uint64_t preparedCount_ = 0;
  ParameterTexts parameters_;
  std::string key_;
};

}  // namespace orlune::postgresql
