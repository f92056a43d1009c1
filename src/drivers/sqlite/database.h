#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "base/regional_settings.h"
#include "drivers/dialect/catalogue.h"
#include "drivers/sqlite/file_cache.h"
#include "drivers/sqlite/handles.h"
#include "drivers/sqlite/row_block.h"
#include "drivers/sqlite/running_statement.h"
#include "drivers/sqlite/triggers.h"
#include "drivers/sqlite/wal_index.h"
#include "platform/database.h"

namespace orlune::sqlite {

/// One open SQLite database, with what is remembered about it from request to request: its tables and its
/// prepared statements. Used by one thread at a time.
class Database {
 public:
  /// Opens `file`, which has to exist. `regional` and `cache`, which belongs to the file, have to outlive the
  /// database. Throws DatabaseError.
  Database(const std::filesystem::path& file, std::chrono::milliseconds busyTimeout,
           const RegionalSettings& regional, FileCache& cache);

  /// Starts to read from one state of the file, unless reading or in a transaction. Creates missing indexes
  /// and triggers unless the file is read-only. Throws DatabaseError.
  void EnsureReading();
  void EndReading();

  /// Starts a transaction as the only writer of the file; only while idle. Throws DatabaseError, as when
  /// another file has taken the file's name, and DatabaseUnavailable when another writer does not end within
  /// `patience`.
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
  /// Runs a translated statement without rows; only in a transaction. Throws DatabaseError.
  void Execute(const std::shared_ptr<CachedStatement>& translated, const StatementText& statement);

  /// The rows of a query as they are in the state that is read, if they were kept; else null.
  std::shared_ptr<const RowBlock> FindKept(const StatementText& query);
  /// Keeps the rows of a query for those who read the same.
  void Keep(const StatementText& query, const CachedStatement& translated,
            std::shared_ptr<const RowBlock> rows);
  /// Above that a result is not kept.
  std::size_t MostKeptBytes() const { return cache_.Results.MostBytesOfOne(); }

 private:
  enum class State { kIdle, kReading, kTransaction };

  bool BeginReading();
  bool RefreshTables();
  void ForgetTables();
  void RequireSameFile();
  std::int64_t DataVersion();
  void NoteCommit() noexcept;
  bool KnowsState() const { return state_ == State::kReading && fileState_; }
  void CreateMissingParts();

  const RegionalSettings& regional_;
  FileCache& cache_;
  DatabaseHandle handle_;
  StatementHandle beginReading_;
  StatementHandle beginTransaction_;
  StatementHandle commit_;
  StatementHandle setSavepoint_;
  StatementHandle releaseSavepoint_;
  StatementHandle schemaVersion_;
  StatementHandle dataVersion_;
  WalIndex walIndex_;
  State state_ = State::kIdle;
  std::optional<std::int64_t> knownVersion_;
  dialect::Catalogue catalogue_;
  StatementCache statements_;
  Triggers triggers_;

  std::optional<WalHeader> header_;  // of the state that is read, or from which the transaction began
  std::shared_ptr<const FileState> fileState_;  // that is read; null when it is not known
  std::int64_t versionBefore_ = 0;              // the data version when the transaction began
  TableSet written_ = 0;                        // in the transaction

  std::string key_;
  std::string scratch_;
};

}  // namespace orlune::sqlite
