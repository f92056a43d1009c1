#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "base/regional_settings.h"
#include "drivers/dialect/catalogue.h"
#include "drivers/postgresql/cached_statement.h"
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
  /// Connects, and makes indexes that are missing. `regional` has to outlive the database. Throws
  /// DatabaseError.
  Database(const std::string& address, const PostgresqlOptions& options, const RegionalSettings& regional);

  /// Ready for another request: forgets the tables when another node changed them. False when the connection
  /// is lost. Asks the server only to read the tables again.
  bool Renew();

  /// False when the connection is known to be lost; the server is not asked.
  bool IsAlive() { return link_.IsAlive(); }

  /// Begins to read from one state of the database, unless reading or in a transaction.
  void EnsureReading();
  void EndReading();
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
  void TellSchemaChange();
  void ForgetTables();
  void ReadTables();
  void Deallocate(const std::string& name);
  void RequireUnconfirmed();

  const RegionalSettings& regional_;
  Link link_;
  State state_ = State::kIdle;
  dialect::Catalogue tables_;
  bool knowsTables_ = false;
  bool hasReadTables_ = false;  // for the current request
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
