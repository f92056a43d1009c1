#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "base/regional_settings.h"
#include "drivers/dialect/catalogue.h"
#include "drivers/sqlite/handles.h"
#include "drivers/sqlite/running_statement.h"
#include "platform/database.h"

namespace orlune::sqlite {

/// One open SQLite database, with what is remembered about it from request to request: its tables and its
/// prepared statements. Used by one thread at a time.
class Database {
 public:
  /// Opens `file`, which has to exist. `regional` has to outlive the database. Throws DatabaseError.
  Database(const std::filesystem::path& file, std::chrono::milliseconds busyTimeout,
           const RegionalSettings& regional);

  /// Starts to read from one state of the file, unless reading or in a transaction. Creates missing indexes
  /// unless the file is read-only. Throws DatabaseError.
  void EnsureReading();
  void EndReading();

  /// Starts a transaction as the only writer of the file; only while idle. Throws DatabaseError, and
  /// DatabaseUnavailable when another writer does not end within `patience`.
  void BeginTransaction(std::chrono::milliseconds patience);
  /// False also when SQLite had to give the transaction up, such as for a full disk.
  bool IsTransactionOpen() const;
  /// Begins a part of the transaction that can be rolled back alone. Throws DatabaseError.
  void SetSavepoint();
  /// Ends the part and keeps it. Throws DatabaseError.
  void ReleaseSavepoint();
  /// Ends the part and undoes it.
  void RollbackToSavepoint() noexcept;
  /// Throws DatabaseError, with the transaction rolled back.
  void Commit();
  void Rollback() noexcept;

  /// Makes it idle. False when the database must be closed.
  bool Reset() noexcept;

  /// The statement translated for the file's current tables; only while reading or in a transaction. Throws
  /// DatabaseError.
  std::shared_ptr<CachedStatement> Translated(const StatementText& statement);
  /// Prepares a translated statement and gives it the values of `statement`. Throws DatabaseError.
  RunningStatement Start(const std::shared_ptr<CachedStatement>& translated, const StatementText& statement);
  /// After a statement that may have changed the tables.
  void ForgetTables();

 private:
  enum class State { kIdle, kReading, kTransaction };

  bool RefreshTables();
  void CreateMissingIndexes();

  const RegionalSettings& regional_;
  DatabaseHandle handle_;
  StatementHandle beginReading_;
  StatementHandle beginTransaction_;
  StatementHandle commit_;
  StatementHandle setSavepoint_;
  StatementHandle releaseSavepoint_;
  StatementHandle schemaVersion_;
  State state_ = State::kIdle;
  std::optional<std::int64_t> knownVersion_;
  dialect::Catalogue catalogue_;
  StatementCache cache_;
  std::string key_;
  std::string scratch_;
};

}  // namespace orlune::sqlite
