#include "drivers/postgresql/link.h"

#include <array>
#include <cstring>
#include <vector>

#include <libpq-fe.h>
#include <poll.h>

#include "base/log_text.h"
#include "drivers/postgresql/address.h"
#include "platform/database.h"

namespace orlune::postgresql {

namespace {

/// Beyond the statement timeout: notices a server that has gone silent.
constexpr std::chrono::milliseconds kReplyMargin{5000};

/// A message of libpq, which may be null, on one line.
std::string MessageText(const char* message) {
  std::string_view text(message == nullptr ? "" : message);
  while (text.ends_with('\n')) text.remove_suffix(1);
  return OneLine(text);
}

struct FreeOptions {
  void operator()(PQconninfoOption* options) const noexcept { PQconninfoFree(options); }
};
using ParsedAddress = std::unique_ptr<PQconninfoOption, FreeOptions>;

/// The message of libpq would show the address with its password.
ParsedAddress Parse(const std::string& address) {
  if (HasUnreadableUser(address)) throw DatabaseError(std::string(kAddressSyntax));
  char* message = nullptr;
  ParsedAddress parsed(PQconninfoParse(address.c_str(), &message));
  PQfreemem(message);
  if (!parsed) throw DatabaseError("malformed address " + WithoutPassword(address));
  return parsed;
}

bool Sets(const PQconninfoOption* parsed, std::string_view keyword) {
  for (; parsed->keyword != nullptr; ++parsed) {
    if (keyword == parsed->keyword) return parsed->val != nullptr;
  }
  return false;
}

class ConnectionParameters {
 public:
  explicit ConnectionParameters(const std::string& address) : parsed_(Parse(address)) {
    Add("dbname", address);
  }
  void AddDefault(const char* keyword, std::string value) {
    if (!Sets(parsed_.get(), keyword)) Add(keyword, std::move(value));
  }
  void Add(const char* keyword, std::string value) {
    keywords_.push_back(keyword);
    values_.push_back(std::move(value));
  }
  pg_conn* Connect() {
    std::vector<const char*> values;
    for (const std::string& value : values_) values.push_back(value.c_str());
    std::vector<const char*> keywords = keywords_;
    keywords.push_back(nullptr);
    values.push_back(nullptr);
    return PQconnectdbParams(keywords.data(), values.data(), 1);
  }

 private:
  ParsedAddress parsed_;
  std::vector<const char*> keywords_;
  std::vector<std::string> values_;
};

/// For poll; below 0 without a limit.
std::chrono::milliseconds ReplyTimeout(const PostgresqlOptions& options) {
  if (options.StatementTimeout.count() == 0) return std::chrono::milliseconds{-1};
  return options.StatementTimeout + kReplyMargin;
}

pg_conn* Connect(const std::string& address, const PostgresqlOptions& options) {
  ConnectionParameters parameters(address);
  parameters.AddDefault("connect_timeout", std::to_string(options.ConnectTimeout.count()));
  parameters.AddDefault("fallback_application_name", "orlune");
  parameters.AddDefault("keepalives_idle", "30");
  parameters.AddDefault("keepalives_interval", "10");
  parameters.AddDefault("keepalives_count", "3");
  parameters.AddDefault("tcp_user_timeout",
                        std::to_string((options.StatementTimeout + kReplyMargin).count()));
  parameters.Add("client_encoding", "UTF8");
  return parameters.Connect();
}

}  // namespace

void ThrowFailure(const Reply& reply) {
  const std::string_view state = reply.SqlState;
  constexpr std::string_view kLockNotAvailable = "55P03";
  if (state.empty() || state.starts_with("08") || state.starts_with("57P") || state == kLockNotAvailable)
    throw DatabaseUnavailable(reply.Error);
  throw DatabaseError(reply.Error);
}

void CloseLink::operator()(pg_conn* connection) const noexcept {
  PQfinish(connection);
}
void ClearResult::operator()(pg_result* result) const noexcept {
  PQclear(result);
}

Link::Link(const std::string& address, const PostgresqlOptions& options)
    : connection_(Connect(address, options)), replyTimeout_(ReplyTimeout(options)) {
  if (PQstatus(connection_.get()) != CONNECTION_OK)
    throw DatabaseError(MessageText(PQerrorMessage(connection_.get())));
  PQsetNoticeProcessor(
      connection_.get(), [](void*, const char*) {}, nullptr);
  if (PQenterPipelineMode(connection_.get()) != 1) throw DatabaseError("the connection has no pipeline mode");
}

ReplyPtr Link::Prepare(const std::string& name, const std::string& sql, std::span<const unsigned> types) {
  return Queue(PQsendPrepare(connection_.get(), name.c_str(), sql.c_str(), static_cast<int>(types.size()),
                             types.data()) == 1);
}

ReplyPtr Link::RunPrepared(const std::string& name, Parameters parameters) {
  return Queue(PQsendQueryPrepared(connection_.get(), name.c_str(), static_cast<int>(parameters.size()),
                                   parameters.data(), nullptr, nullptr, 0) == 1);
}

ReplyPtr Link::Run(const char* sql) {
  return Queue(PQsendQueryParams(connection_.get(), sql, 0, nullptr, nullptr, nullptr, nullptr, 0) == 1);
}

void Link::Mark() {
  isLongBatch_ = false;
  if (!hasOpenBatch_) return;
  hasOpenBatch_ = hasUnrequested_ = false;
  if (PQpipelineSync(connection_.get()) == 1) {
    awaited_.push_back({nullptr});
  } else {
    Lose(MessageText(PQerrorMessage(connection_.get())));
  }
}

void Link::BeginLongBatch() {
  Mark();
  isLongBatch_ = true;
}

void Link::Flush() {
  PQflush(connection_.get());
}

void Link::Await(const Reply& reply) {
  if (reply.Now != Reply::State::kAwaited) return;
  RequestReplies();
  while (reply.Now == Reply::State::kAwaited) ReadNext();
}

const ResultHandle& Link::Require(const Reply& reply) {
  Await(reply);
  if (reply.Now == Reply::State::kFailed) ThrowFailure(reply);
  return reply.Result;
}

/// Also reads what the server sent unasked: that it stops, or a notification.
bool Link::IsAlive() {
  for (int reads = 0; reads < 3; ++reads) {
    if (PQstatus(connection_.get()) != CONNECTION_OK) return false;
    pollfd socket{PQsocket(connection_.get()), POLLIN, 0};
    if (poll(&socket, 1, 0) <= 0) return true;
    if (PQconsumeInput(connection_.get()) != 1) return false;
  }
  return PQstatus(connection_.get()) == CONNECTION_OK;
}

bool Link::TakeNotification() {
  bool hasCome = false;
  while (PGnotify* notification = PQnotifies(connection_.get())) {
    PQfreemem(notification);
    hasCome = true;
  }
  return hasCome;
}

int Link::ServerVersion() const {
  return PQserverVersion(connection_.get());
}

std::string Link::ServerEncoding() const {
  const char* encoding = PQparameterStatus(connection_.get(), "server_encoding");
  return encoding == nullptr ? "" : encoding;
}

ReplyPtr Link::Queue(bool isSent) {
  auto reply = std::make_shared<Reply>();
  awaited_.push_back({reply});
  hasOpenBatch_ = hasUnrequested_ = true;
  if (!isSent) Lose(MessageText(PQerrorMessage(connection_.get())));
  return reply;
}

/// Of all commands so far.
void Link::RequestReplies() {
  if (!isLongBatch_) return Mark();
  if (!hasUnrequested_) return;
  hasUnrequested_ = false;
  if (PQsendFlushRequest(connection_.get()) != 1 || PQflush(connection_.get()) != 0)
    Lose(MessageText(PQerrorMessage(connection_.get())));
}

void Link::ReadNext() {
  if (awaited_.empty()) throw DatabaseUnavailable("no reply is awaited");
  const Awaited next = awaited_.front();
  if (next.Command) {
    ReadReply(*next.Command);
  } else {
    const ResultHandle mark = WaitForResult();
    if (!mark || PQresultStatus(mark.get()) != PGRES_PIPELINE_SYNC)
      return Lose("unexpected reply of the server");
    awaited_.pop_front();
  }
}

void Link::ReadReply(Reply& reply) {
  ResultHandle result = WaitForResult();
  if (!result) return Lose("unexpected reply of the server");
  const ExecStatusType status = PQresultStatus(result.get());
  const bool isDone = status == PGRES_TUPLES_OK || status == PGRES_COMMAND_OK;
  if (isDone) {
    reply.Result = std::move(result);
  } else {
    Fail(reply, result.get());
  }
  while (const ResultHandle rest = WaitForResult()) {
  }
  if (awaited_.empty()) return;  // the connection was lost meanwhile
  if (isDone) reply.Now = Reply::State::kDone;
  awaited_.pop_front();
}

/// The next result, or null between the results of two commands and when the connection is lost.
ResultHandle Link::WaitForResult() {
  while (PQisBusy(connection_.get()) == 1) {
    pollfd socket{PQsocket(connection_.get()), POLLIN, 0};
    const int ready = poll(&socket, 1, static_cast<int>(replyTimeout_.count()));
    if (ready == 0) {
      Lose("the server does not reply");
      return nullptr;
    }
    if (ready > 0 && PQconsumeInput(connection_.get()) != 1) {
      Lose(MessageText(PQerrorMessage(connection_.get())));
      return nullptr;
    }
  }
  ResultHandle result(PQgetResult(connection_.get()));
  if (PQstatus(connection_.get()) != CONNECTION_OK) {
    Lose(MessageText(PQerrorMessage(connection_.get())));
    return nullptr;
  }
  return result;
}

void Link::Fail(Reply& reply, pg_result* result) {
  if (PQresultStatus(result) != PGRES_PIPELINE_ABORTED) {
    const char* state = PQresultErrorField(result, PG_DIAG_SQLSTATE);
    batchError_ = MessageText(PQresultErrorField(result, PG_DIAG_MESSAGE_PRIMARY));
    batchSqlState_ = state == nullptr ? "" : state;
  }
  reply.Now = Reply::State::kFailed;
  reply.Error = batchError_;
  reply.SqlState = batchSqlState_;
}

/// Fails everything that is awaited.
void Link::Lose(const std::string& cause) {
  for (const Awaited& lost : awaited_) {
    if (!lost.Command) continue;
    lost.Command->Now = Reply::State::kFailed;
    lost.Command->Error = cause.empty() ? "the connection to the server was lost" : cause;
  }
  awaited_.clear();
  hasOpenBatch_ = isLongBatch_ = hasUnrequested_ = false;
  connection_.reset();
}

}  // namespace orlune::postgresql
