#include "drivers/sqlite/database.h"

#include <exception>
#include <utility>

#include <sqlite3.h>

#include "drivers/dialect/evaluation.h"
#include "drivers/dialect/parser.h"
#include "drivers/dialect/shape.h"
#include "drivers/sqlite/catalogue_reader.h"
#include "drivers/sqlite/indexes.h"
#include "drivers/sqlite/sqlite_sql.h"

namespace orlune::sqlite {

namespace {

void Bind(sqlite3_stmt* statement, int position, const dialect::StoredValue& value) {
  int result = SQLITE_OK;
  if (const auto* number = std::get_if<std::int64_t>(&value)) {
    result = sqlite3_bind_int64(statement, position, *number);
  } else if (const auto* text = std::get_if<std::string_view>(&value)) {
    result =
        sqlite3_bind_text64(statement, position, text->data(), text->size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  } else {
    result = sqlite3_bind_null(statement, position);
  }
  Check(sqlite3_db_handle(statement), result);
}

std::int64_t ReadNumber(sqlite3_stmt* query) {
  Step(query);
  const std::int64_t number = sqlite3_column_int64(query, 0);
  sqlite3_reset(query);
  return number;
}

}  // namespace

Database::Database(const std::filesystem::path& file, std::chrono::milliseconds busyTimeout,
                   const RegionalSettings& regional, FileCache& cache)
    : regional_(regional),
      cache_(cache),
      handle_(OpenExisting(file, busyTimeout)),
      beginReading_(Prepare(handle_.get(), "BEGIN DEFERRED")),
      beginTransaction_(Prepare(handle_.get(), "BEGIN IMMEDIATE")),
      commit_(Prepare(handle_.get(), "COMMIT")),
      setSavepoint_(Prepare(handle_.get(), "SAVEPOINT part")),
      releaseSavepoint_(Prepare(handle_.get(), "RELEASE part")),
      schemaVersion_(Prepare(handle_.get(), "PRAGMA schema_version")),
      dataVersion_(Prepare(handle_.get(), "PRAGMA data_version")),
      walIndex_(handle_.get()) {
  cache_.History.KeepOpen(file, busyTimeout);
}

void Database::EnsureReading() {
  if (state_ != State::kIdle) {
    if (!knownVersion_) RefreshTables();
    return;
  }
  if (!BeginReading()) return;
  if (!HasAllIndexes(handle_.get(), catalogue_) || !triggers_.AreComplete()) CreateMissingParts();
}

/// Returns whether the tables changed. The state is known when the header is the same before and after the
/// first read, which is that of the tables.
bool Database::BeginReading() {
  const auto header = walIndex_.Read();
  Run(beginReading_.get());
  state_ = State::kReading;
  const bool haveTablesChanged = RefreshTables();
  if (!header || header != walIndex_.Read()) {
    fileState_.reset();
  } else if (!fileState_ || header_ != header) {
    fileState_ = cache_.History.StateOf(*header);
    header_ = header;
  }
  return haveTablesChanged;
}

void Database::EndReading() {
  if (state_ != State::kReading) return;
  Run(commit_.get());
  state_ = State::kIdle;
}

void Database::BeginTransaction(std::chrono::milliseconds patience) {
  sqlite3_busy_timeout(handle_.get(), static_cast<int>(patience.count()));
  Run(beginTransaction_.get());
  state_ = State::kTransaction;
  fileState_.reset();
  written_ = 0;
  try {
    RequireSameFile();
    RefreshTables();
    header_ = walIndex_.Read();
    versionBefore_ = DataVersion();
  } catch (const DatabaseError&) {
    Rollback();
    throw;
  }
}

bool Database::IsTransactionOpen() const {
  return state_ == State::kTransaction && sqlite3_get_autocommit(handle_.get()) == 0;
}

void Database::SetSavepoint() {
  Run(setSavepoint_.get());
}

void Database::ReleaseSavepoint() {
  Run(releaseSavepoint_.get());
}

void Database::RollbackToSavepoint() noexcept {
  sqlite3_exec(handle_.get(), "ROLLBACK TO part; RELEASE part", nullptr, nullptr, nullptr);
  ForgetTables();
}

void Database::Commit() {
  const FileHistory::Committing committing(cache_.History);
  try {
    Run(commit_.get());
    state_ = State::kIdle;
  } catch (const DatabaseError&) {
    Rollback();
    throw;
  }
  NoteCommit();
}

/// The first header was read as the only writer. The data version is still the same when nobody but this
/// database has committed since, so the second header, the same before and after that, is of its own commit.
void Database::NoteCommit() noexcept {
  if (!header_ || written_ == 0) return;
  try {
    const auto header = walIndex_.Read();
    const bool isOwnCommit = DataVersion() == versionBefore_ && header == walIndex_.Read();
    if (header && isOwnCommit) cache_.History.AddCommit(*header_, *header, written_);
  } catch (const std::exception&) {
    // Committed it is; the next reader meets a state of unknown origin.
  }
}

void Database::Rollback() noexcept {
  if (sqlite3_get_autocommit(handle_.get()) == 0)
    sqlite3_exec(handle_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
  state_ = State::kIdle;
  ForgetTables();
}

bool Database::Reset() noexcept {
  if (state_ == State::kReading && sqlite3_step(commit_.get()) == SQLITE_DONE) state_ = State::kIdle;
  sqlite3_reset(commit_.get());
  if (state_ != State::kIdle) Rollback();
  return sqlite3_get_autocommit(handle_.get()) != 0;
}

std::shared_ptr<CachedStatement> Database::Translated(const StatementText& statement) {
  dialect::WriteShapeKey(statement, key_);
  if (auto known = statements_.Find(key_)) return known;
  auto translated = std::make_shared<CachedStatement>();
  translated->Translation = dialect::Translate(dialect::Parse(statement), catalogue_, SqliteSql(), regional_);
  const std::vector<std::string>& named = translated->Translation.Tables;
  const bool isQuery = !translated->Translation.Columns.empty();
  if (isQuery) {
    translated->Tables = cache_.History.SetOf(named);
  } else if (!triggers_.HasOthers()) {
    translated->Tables = cache_.History.SetOf(triggers_.WithWritten(named));
  }
  if (translated->Translation.ChangesSchema) translated->Tables = kAllTables;
  statements_.Add(key_, translated);
  return translated;
}

RunningStatement Database::Start(const std::shared_ptr<CachedStatement>& translated,
                                 const StatementText& statement) {
  if (state_ == State::kTransaction && !IsTransactionOpen())
    throw DatabaseError("the transaction has been given up");
  StatementHandle prepared;
  if (translated->Idle.empty()) {
    prepared = Prepare(handle_.get(), translated->Translation.Sql);
  } else {
    prepared = std::move(translated->Idle.back());
    translated->Idle.pop_back();
  }
  RunningStatement running(translated, std::move(prepared));
  int position = 0;
  for (const dialect::Parameter& parameter : translated->Translation.Parameters) {
    Bind(running.Handle(), ++position,
         dialect::Evaluate(parameter.Source, parameter.Target, statement, regional_, scratch_));
  }
  return running;
}

void Database::Execute(const std::shared_ptr<CachedStatement>& translated, const StatementText& statement) {
  const RunningStatement running = Start(translated, statement);
  written_ |= translated->Tables;
  const bool changesSchema = translated->Translation.ChangesSchema;
  if (changesSchema) ForgetTables();
  Run(running.Handle());
  // Nobody sees tables before they are watched.
  if (changesSchema) CreateMissingTriggers(handle_.get(), ReadCatalogue(handle_.get()));
}

std::shared_ptr<const RowBlock> Database::FindKept(const StatementText& query) {
  if (!KnowsState()) return nullptr;
  dialect::WriteResultKey(query, key_);
  return cache_.Results.Find(key_, *fileState_);
}

void Database::Keep(const StatementText& query, const CachedStatement& translated,
                    std::shared_ptr<const RowBlock> rows) {
  if (!KnowsState()) return;
  dialect::WriteResultKey(query, key_);
  cache_.Results.Keep(key_, translated.Tables, *fileState_, std::move(rows));
}

void Database::ForgetTables() {
  knownVersion_.reset();
  statements_.Clear();
}

/// Reads the tables again when they changed, and returns whether they did.
bool Database::RefreshTables() {
  const std::int64_t version = ReadNumber(schemaVersion_.get());
  if (knownVersion_ == version) return false;
  ForgetTables();
  catalogue_ = ReadCatalogue(handle_.get());
  triggers_ = Triggers(handle_.get(), catalogue_);
  knownVersion_ = version;
  return true;
}

/// What is written to a file without a name is lost.
void Database::RequireSameFile() {
  int hasMoved = 0;
  sqlite3_file_control(handle_.get(), "main", SQLITE_FCNTL_HAS_MOVED, &hasMoved);
  if (hasMoved != 0) throw DatabaseError("the database file was moved or replaced; repeat the request");
}

std::int64_t Database::DataVersion() {
  return ReadNumber(dataVersion_.get());
}

/// A read-only file is read without them.
void Database::CreateMissingParts() {
  EndReading();
  try {
    sqlite::CreateMissingParts(handle_.get(), catalogue_);
  } catch (const DatabaseError&) {
    ForgetTables();
  }
  BeginReading();
}

}  // namespace orlune::sqlite
