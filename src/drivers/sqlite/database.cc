#include "drivers/sqlite/database.h"

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

}  // namespace

Database::Database(const std::filesystem::path& file, std::chrono::milliseconds busyTimeout,
                   const RegionalSettings& regional)
    : regional_(regional),
      handle_(OpenExisting(file, busyTimeout)),
      beginReading_(Prepare(handle_.get(), "BEGIN DEFERRED")),
      beginTransaction_(Prepare(handle_.get(), "BEGIN IMMEDIATE")),
      commit_(Prepare(handle_.get(), "COMMIT")),
      setSavepoint_(Prepare(handle_.get(), "SAVEPOINT part")),
      releaseSavepoint_(Prepare(handle_.get(), "RELEASE part")),
      schemaVersion_(Prepare(handle_.get(), "PRAGMA schema_version")) {}

void Database::EnsureReading() {
  if (state_ != State::kIdle) {
    if (!knownVersion_) RefreshTables();
    return;
  }
  Run(beginReading_.get());
  state_ = State::kReading;
  if (RefreshTables() && !HasAllIndexes(handle_.get(), catalogue_)) CreateMissingIndexes();
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
  RefreshTables();
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
  try {
    Run(commit_.get());
    state_ = State::kIdle;
  } catch (const DatabaseError&) {
    Rollback();
    throw;
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
  if (auto known = cache_.Find(key_)) return known;
  auto translated = std::make_shared<CachedStatement>();
  translated->Translation = dialect::Translate(dialect::Parse(statement), catalogue_, SqliteSql(), regional_);
  cache_.Add(key_, translated);
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

void Database::ForgetTables() {
  knownVersion_.reset();
  cache_.Clear();
}

/// Reads the tables again when they changed, and returns whether they did.
bool Database::RefreshTables() {
  Step(schemaVersion_.get());
  const std::int64_t version = sqlite3_column_int64(schemaVersion_.get(), 0);
  sqlite3_reset(schemaVersion_.get());
  if (knownVersion_ == version) return false;
  ForgetTables();
  catalogue_ = ReadCatalogue(handle_.get());
  knownVersion_ = version;
  return true;
}

/// A read-only file is read without them.
void Database::CreateMissingIndexes() {
  EndReading();
  try {
    sqlite::CreateMissingIndexes(handle_.get(), catalogue_);
  } catch (const DatabaseError&) {
    ForgetTables();
  }
  Run(beginReading_.get());
  state_ = State::kReading;
  RefreshTables();
}

}  // namespace orlune::sqlite
