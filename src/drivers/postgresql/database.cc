#include "drivers/postgresql/database.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>
#include <utility>

#include <libpq-fe.h>

#include "drivers/dialect/naming.h"
#include "drivers/dialect/parser.h"
#include "drivers/dialect/shape.h"
#include "drivers/postgresql/parameter_texts.h"
#include "drivers/postgresql/postgresql_sql.h"
#include "drivers/postgresql/result_rows.h"
#include "drivers/postgresql/schema_reader.h"
#include "drivers/postgresql/schema_setup.h"

namespace orlune::postgresql {

namespace {

constexpr std::size_t kMostUnconfirmed = 256;

bool HasFailed(const ReplyPtr& reply) {
  return reply && reply->Now == Reply::State::kFailed;
}

/// Whether an error means that what is remembered of the server's tables or statements is stale.
bool IsStale(std::string_view sqlState) {
  constexpr std::array<std::string_view, 6> kStates{
      "42P01",  // no such table
      "42703",  // no such column
      "42701",  // the column exists
      "0A000",  // a prepared statement's columns changed
      "26000",  // no such prepared statement
      "42883",  // no such function, as when somebody removed the one that folds texts
  };
  return std::find(kStates.begin(), kStates.end(), sqlState) != kStates.end();
}

std::vector<unsigned> TypesOf(const dialect::Translation& translation) {
  std::vector<unsigned> types;
  for (const dialect::Parameter& parameter : translation.Parameters)
    types.push_back(TypeOf(parameter.Target.Type));
  return types;
}

}  // namespace

Database::Database(const std::string& address, const PostgresqlOptions& options,
                   const RegionalSettings& regional, KeptReplies& kept)
    : regional_(regional), kept_(kept), link_(address, options) {
  kept_.AddConnection();
  Configure(link_, options);
  // A batch of queries is a transaction without the cost of BEGIN and COMMIT.
  link_.Run("SET default_transaction_isolation = 'repeatable read'");
  link_.Mark();
  ReadTables();
}

bool Database::Renew() {
  if (!link_.IsAlive()) return false;
  hasReadTables_ = hasWritten_ = false;
  if (link_.TakeNotification()) ForgetTables();
  try {
    if (!knowsTables_) ReadTables();
  } catch (const DatabaseError&) {
    if (link_.IsAlive()) throw;
    return false;
  }
  return true;
}

void Database::EnsureReading() {
  if (state_ != State::kIdle) return;
  link_.BeginLongBatch();
  AskForSnapshot();
  state_ = State::kReading;
}

void Database::EndReading() {
  if (state_ != State::kReading) return;
  link_.Mark();
  state_ = State::kIdle;
}

/// As the first query of reading: it takes the snapshot that it returns.
void Database::AskForSnapshot() {
  reading_ = {.Snapshot = nullptr, .State = {}, .Source = source_, .Connections = kept_.Connections()};
  if (!source_ || hasWritten_) return;
  if (!preparedSnapshot_ || HasFailed(preparedSnapshot_)) {
    snapshotName_ = NewName();
    preparedSnapshot_ = link_.Prepare(snapshotName_, "SELECT pg_current_snapshot()", {});
  }
  reading_.Snapshot = link_.RunPrepared(snapshotName_, {});
}

/// A snapshot's text begins with the lowest number of a transaction that is running.
std::int64_t Database::ChangeHorizon() {
  EnsureReading();
  const bool isKnown = state_ == State::kReading && reading_.Snapshot;
  const ReplyPtr reply = isKnown ? reading_.Snapshot : link_.Run("SELECT pg_current_snapshot()");
  Require(*reply);
  const std::string_view snapshot = FieldText(reply->Result, 0, 0);
  std::int64_t oldest = 0;
  std::from_chars(snapshot.data(), snapshot.data() + snapshot.size(), oldest);
  return oldest;
}

/// The number of the state that is read; 0 when its replies must not be kept.
std::uint64_t Database::ReadState() {
  if (reading_.State) return *reading_.State;
  reading_.State = 0;
  if (reading_.Snapshot) {
    Require(*reading_.Snapshot);
    reading_.State =
        kept_.StateOf({reading_.Source, reading_.Connections, FieldText(reading_.Snapshot->Result, 0, 0)});
  }
  return *reading_.State;
}

KeptReplyPtr Database::FindKept(const StatementText& query) {
  if (hasWritten_ || !knowsTables_) return nullptr;
  dialect::WriteResultKey(query, key_);
  KeptReplyPtr kept = kept_.Find(key_);
  const bool isOfOther =
      kept && state_ == State::kReading && reading_.State && *reading_.State != kept->State;
  return isOfOther ? nullptr : kept;
}

bool Database::Reads(const KeptReply& kept) {
  EnsureReading();
  return ReadState() == kept.State;
}

void Database::Keep(const StatementText& query, std::shared_ptr<const CachedStatement> translated,
                    ReplyPtr reply) {
  if (state_ != State::kReading) return;
  const std::uint64_t state = ReadState();
  if (state == 0) return;
  const auto* translation = &translated->Translation;
  dialect::WriteResultKey(query, key_);
  kept_.Keep(key_, std::make_shared<const KeptReply>(
                       KeptReply{state, {std::move(translated), translation}, std::move(reply)}));
}

void Database::BeginTransaction() {
  EndReading();
  hasWritten_ = true;
  hasChangedTables_ = false;
  unconfirmed_.clear();
  for (const char* command : {kBeginWriting, kBecomeOnlyWriter})
    unconfirmed_.push_back({link_.Run(command), ""});
  state_ = State::kTransaction;
}

void Database::Commit() {
  try {
    const ReplyPtr commit = link_.Run("COMMIT");
    link_.Await(*commit);
    RequireUnconfirmed();
    RequireCommitted(*commit);
    state_ = State::kIdle;
    kept_.Forget();
    if (hasChangedTables_) SetUpChangedTables();
  } catch (const DatabaseError&) {
    Rollback();
    throw;
  }
}

void Database::Rollback() noexcept {
  link_.Mark();
  link_.Run("ROLLBACK");
  link_.Mark();
  link_.Flush();
  unconfirmed_.clear();
  state_ = State::kIdle;
  ForgetTables();
}

void Database::Reset() noexcept {
  if (state_ == State::kTransaction) Rollback();
  EndReading();
  link_.Flush();
}

std::shared_ptr<CachedStatement> Database::Translated(const StatementText& statement) {
  if (!knowsTables_) ReadTables();
  dialect::WriteShapeKey(statement, key_);
  if (auto known = cache_.Find(key_)) return known;
  auto translated = std::make_shared<CachedStatement>();
  translated->Translation = Translate(dialect::Parse(statement));
  translated->Name = NewName();
  const auto displaced = cache_.Add(key_, translated);
  if (displaced && displaced->Prepared) Deallocate(displaced->Name);
  return translated;
}

/// Another node may just have added what is missing.
dialect::Translation Database::Translate(const dialect::Statement& statement) {
  try {
    return dialect::Translate(statement, tables_, PostgresqlSql(), regional_);
  } catch (const DatabaseError&) {
    if (hasReadTables_) throw;
    ReadTables();
    return dialect::Translate(statement, tables_, PostgresqlSql(), regional_);
  }
}

ReplyPtr Database::Start(CachedStatement& translated, const StatementText& statement) {
  parameters_.Evaluate(translated.Translation.Parameters, statement, regional_);
  return Send(translated);
}

/// Sends the statement with the values that were evaluated last.
ReplyPtr Database::Send(CachedStatement& translated) {
  if (!translated.Prepared || HasFailed(translated.Prepared)) {
    translated.Prepared =
        link_.Prepare(translated.Name, translated.Translation.Sql, TypesOf(translated.Translation));
  }
  return link_.RunPrepared(translated.Name, parameters_.Values());
}

void Database::Require(const Reply& reply) {
  link_.Await(reply);
  if (IsInTransaction()) RequireUnconfirmed();
  if (reply.Now == Reply::State::kDone) return;
  if (IsStale(reply.SqlState)) ForgetTables();
  EndReading();
  ThrowFailure(reply);
}

void Database::RunAlone(CachedStatement& translated, const StatementText& statement) {
  parameters_.Evaluate(translated.Translation.Parameters, statement, regional_);
  EndReading();
  hasWritten_ = true;
  const bool changesSchema = translated.Translation.ChangesSchema;
  link_.Run(kBeginWriting);
  link_.Run(changesSchema ? kBecomeOnlyWriter : kBecomeWriter);
  const ReplyPtr reply = Send(translated);
  if (changesSchema) link_.Run(kTellOthers);
  const ReplyPtr commit = link_.Run("COMMIT");
  link_.Await(*commit);
  if (changesSchema || IsStale(reply->SqlState)) ForgetTables();
  if (HasFailed(commit)) {
    link_.Run("ROLLBACK");
    link_.Mark();
  }
  link_.Require(*reply);
  RequireCommitted(*commit);
  kept_.Forget();
  if (changesSchema) SetUpChangedTables();
}

void Database::RunInTransaction(CachedStatement& translated, const StatementText& statement) {
  unconfirmed_.push_back({Start(translated, statement), dialect::MaskedText(statement)});
  if (translated.Translation.ChangesSchema) TellSchemaChange();
  if (unconfirmed_.size() < kMostUnconfirmed) return;
  link_.Await(*unconfirmed_.back().Reply);
  RequireUnconfirmed();
}

void Database::RunWithSavepoint(CachedStatement& translated, const StatementText& statement) {
  link_.Mark();
  const ReplyPtr savepoint = link_.Run("SAVEPOINT before");
  const ReplyPtr reply = Start(translated, statement);
  link_.Await(*link_.Run("RELEASE before"));
  RequireUnconfirmed();
  if (!HasFailed(reply)) {
    if (translated.Translation.ChangesSchema) TellSchemaChange();
    return;
  }
  if (!HasFailed(savepoint)) unconfirmed_.push_back({link_.Run("ROLLBACK TO before"), ""});
  ThrowFailure(*reply);
}

void Database::TellSchemaChange() {
  hasChangedTables_ = true;
  unconfirmed_.push_back({link_.Run(kTellOthers), ""});
  ForgetTables();
}

/// At once, for what is written to them next.
void Database::SetUpChangedTables() {
  ForgetTables();
  ReadTables();
}

void Database::ForgetTables() {
  knowsTables_ = false;
  cache_.Clear();
  preparedSnapshot_ = nullptr;
  if (state_ == State::kIdle) Deallocate("ALL");
}

void Database::ReadTables() {
  Schema schema = state_ == State::kIdle ? SetUpSchema(link_) : ReadSchema(link_);
  tables_ = std::move(schema.Tables);
  source_ = std::move(schema.Source);
  reading_.State = 0;
  knowsTables_ = hasReadTables_ = true;
}

/// For a statement to be prepared under.
std::string Database::NewName() {
  return "s" + std::to_string(++preparedCount_);
}

void Database::Deallocate(const std::string& name) {
  link_.Run(("DEALLOCATE " + name).c_str());
  if (state_ == State::kIdle) link_.Mark();
}

/// Throws DatabaseError unless what was sent before in the transaction has succeeded.
void Database::RequireUnconfirmed() {
  for (const Unconfirmed& command : unconfirmed_)
    dialect::NamingMasked([&] { return command.Statement; }, [&] { link_.Require(*command.Reply); });
  unconfirmed_.clear();
}

}  // namespace orlune::postgresql
