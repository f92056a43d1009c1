#include "http/http_host.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <stdexcept>
#include <thread>

#include <microhttpd.h>
#include <sys/socket.h>
#include <unistd.h>

#include "http/connection_watch.h"
#include "http/exchange.h"

namespace orlune {
namespace {

using ResponseHandle = std::unique_ptr<MHD_Response, decltype(&MHD_destroy_response)>;

ResponseHandle MakeResponse(std::string body) {
  auto kept = std::make_unique<std::string>(std::move(body));
  std::string* text = kept.get();
  ResponseHandle response(
      MHD_create_response_from_buffer_with_free_callback_cls(
          text->size(), text->data(),
          [](void* owned) { std::unique_ptr<std::string>(static_cast<std::string*>(owned)); }, text),
      &MHD_destroy_response);
  if (response != nullptr) static_cast<void>(kept.release());
  return response;
}

ResponseHandle MakeResponse(OpenFile file) {
  ResponseHandle response(MHD_create_response_from_fd(file.size(), file.Release()), &MHD_destroy_response);
  return response;
}

void AddHeader(const ResponseHandle& response, const char* name, const char* value) {
  if (MHD_add_response_header(response.get(), name, value) != MHD_YES)
    throw std::runtime_error("a header could not be added");
}

ResponseHandle MakeResponse(ReplyMessage reply, bool isLast) {
  ResponseHandle response = std::visit([](auto& body) { return MakeResponse(std::move(body)); }, reply.Body);
  if (response == nullptr) throw std::bad_alloc();
  for (const auto& [name, value] : reply.Headers) AddHeader(response, name.c_str(), value.c_str());
  AddHeader(response, "X-Content-Type-Options", "nosniff");
  AddHeader(response, "X-Frame-Options", "SAMEORIGIN");
  AddHeader(response, "Referrer-Policy", "same-origin");
  if (isLast) AddHeader(response, "Connection", "close");
  return response;
}

/// What belongs to one connection.
struct Client {
  ConnectionWatch::Watched& Watched;
  std::unique_ptr<Exchange> Current;  ///< null between two requests
  bool IsNew = true;                  ///< no request has begun so far
};

Client& ClientOf(MHD_Connection* connection) {
  const auto* context = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_SOCKET_CONTEXT);
  return *static_cast<Client*>(context->socket_context);
}

// For a request that the library cannot read to its end: answers past the library and hangs up.
void RefuseAtOnce(int socket, unsigned status) {
  const ReplyMessage reply = Refusal(status);
  std::string text = "HTTP/1.1 " + std::to_string(status) + " " + MHD_get_reason_phrase_for(status) + "\r\n";
  for (const auto& [name, value] : reply.Headers) text.append(name).append(": ").append(value).append("\r\n");
  text.append("Content-Length: ").append(std::to_string(reply.BodySize()));
  text.append("\r\nConnection: close\r\n\r\n").append(std::get<std::string>(reply.Body));
  static_cast<void>(send(socket, text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT));
  shutdown(socket, SHUT_RDWR);
}

}  // namespace

class HttpHost::Daemon {
 public:
  Daemon(ListeningSocket socket, unsigned threads, const HostLimits& limits, Answerer answer);
  ~Daemon();
  Daemon(const Daemon&) = delete;
  Daemon& operator=(const Daemon&) = delete;

  void CloseConnectionsAfterReply() { isLastReply_ = true; }
  std::size_t RunningRequests() const;

 private:
  static void* OnTarget(void* self, const char* target, MHD_Connection* connection);
  static MHD_Result OnRequest(void* self, MHD_Connection* connection, const char* url, const char* method,
                              const char* version, const char* body, std::size_t* bodySize, void** context);
  static void OnCompleted(void* self, MHD_Connection* connection, void** context,
                          MHD_RequestTerminationCode code);
  static void OnConnection(void* self, MHD_Connection* connection, void** client,
                           MHD_ConnectionNotificationCode code);

  MHD_Result Begin(MHD_Connection* connection, Exchange& exchange, std::string_view method,
                   const char* version);
  MHD_Result Continue(MHD_Connection* connection, Exchange& exchange, std::string_view body);
  MHD_Result Reply(MHD_Connection* connection, const Exchange& exchange);
  void EndExchange(Client& client);
  void CountOut(Client& newcomer);
  void LetConnectingFinish() const;
  void WaitForRequests();

  HostLimits limits_;
  Answerer answer_;
  ConnectionWatch watch_;
  std::atomic<bool> isLastReply_ = false;
  mutable std::mutex runningMutex_;
  std::condition_variable ended_;
  std::size_t running_ = 0;    // exchanges that have begun
  std::size_t newcomers_ = 0;  // clients that are new
  const int listening_;
  MHD_Daemon* daemon_ = nullptr;
};

HttpHost::Daemon::Daemon(ListeningSocket socket, unsigned threads, const HostLimits& limits, Answerer answer)
    : limits_(limits),
      answer_(std::move(answer)),
      watch_(std::min<std::chrono::milliseconds>(limits.Receiving / 4, std::chrono::seconds(1))),
      listening_(socket.Release()) {
  const unsigned connections = std::max(limits.Connections, threads);
  daemon_ =
      MHD_start_daemon(MHD_USE_EPOLL_INTERNAL_THREAD | MHD_USE_ITC, 0, nullptr, nullptr, &OnRequest, this,  //
                       MHD_OPTION_LISTEN_SOCKET, listening_,                                                //
                       MHD_OPTION_THREAD_POOL_SIZE, threads,                                                //
                       MHD_OPTION_CONNECTION_LIMIT, connections,                                            //
                       MHD_OPTION_PER_IP_CONNECTION_LIMIT, limits.ConnectionsOfOneAddress,                  //
                       MHD_OPTION_CONNECTION_TIMEOUT, static_cast<unsigned>(limits.Inactivity.count()),     //
                       MHD_OPTION_CONNECTION_MEMORY_LIMIT, limits.HeaderBytes,                              //
                       MHD_OPTION_STRICT_FOR_CLIENT, 1,                                                     //
                       MHD_OPTION_URI_LOG_CALLBACK, &OnTarget, this,                                        //
                       MHD_OPTION_NOTIFY_COMPLETED, &OnCompleted, this,                                     //
                       MHD_OPTION_NOTIFY_CONNECTION, &OnConnection, this, MHD_OPTION_END);
  if (daemon_ != nullptr) return;
  close(listening_);
  throw std::runtime_error("the HTTP server cannot be started");
}

HttpHost::Daemon::~Daemon() {
  if (isLastReply_.exchange(true)) LetConnectingFinish();
  const int descriptor = MHD_quiesce_daemon(daemon_);
  if (descriptor != MHD_INVALID_SOCKET) close(descriptor);
  WaitForRequests();
  MHD_stop_daemon(daemon_);
}

void HttpHost::Daemon::LetConnectingFinish() const {
  IgnoreNewConnections(listening_);
  const auto deadline = std::chrono::steady_clock::now() + limits_.Stopping;
  do {
    std::this_thread::sleep_for(limits_.Connecting);
  } while (HasWaitingConnections(listening_) && std::chrono::steady_clock::now() < deadline);
}

void HttpHost::Daemon::WaitForRequests() {
  std::unique_lock lock(runningMutex_);
  ended_.wait_for(lock, limits_.Beginning, [this] { return running_ == 0 && newcomers_ == 0; });
  ended_.wait_for(lock, limits_.Stopping, [this] { return running_ == 0; });
}

std::size_t HttpHost::Daemon::RunningRequests() const {
  const std::lock_guard lock(runningMutex_);
  return running_;
}

void* HttpHost::Daemon::OnTarget(void* self, const char* target, MHD_Connection* connection) {
  Client& client = ClientOf(connection);
  client.Current = std::make_unique<Exchange>(target == nullptr ? "" : target,
                                              static_cast<Daemon*>(self)->limits_.BodyBytes);
  if (client.Current->IsHopeless()) RefuseAtOnce(client.Watched.Socket, client.Current->RefusalStatus());
  return nullptr;
}

MHD_Result HttpHost::Daemon::OnRequest(void* self, MHD_Connection* connection, const char* /*url*/,
                                       const char* method, const char* version, const char* body,
                                       std::size_t* bodySize, void** /*context*/) {
  try {
    Exchange& exchange = *ClientOf(connection).Current;
    Daemon& daemon = *static_cast<Daemon*>(self);
    if (!exchange.HasBegun()) return daemon.Begin(connection, exchange, method, version);
    const std::string_view piece(body, *bodySize);
    *bodySize = 0;
    return daemon.Continue(connection, exchange, piece);
  } catch (...) {
    return MHD_NO;  // out of memory: the connection is closed
  }
}

MHD_Result HttpHost::Daemon::Begin(MHD_Connection* connection, Exchange& exchange, std::string_view method,
                                   const char* version) {
  if (exchange.IsHopeless()) return MHD_NO;
  {
    const std::lock_guard lock(runningMutex_);
    ++running_;
  }
  CountOut(ClientOf(connection));
  exchange.Begin(connection, method, version);
  return exchange.IsHopeless() ? Reply(connection, exchange) : MHD_YES;
}

MHD_Result HttpHost::Daemon::Continue(MHD_Connection* connection, Exchange& exchange, std::string_view body) {
  if (!body.empty()) return exchange.TakeBody(body) ? MHD_YES : MHD_NO;
  exchange.End();
  ConnectionWatch::Extend(ClientOf(connection).Watched, limits_.Sending);
  return Reply(connection, exchange);
}

MHD_Result HttpHost::Daemon::Reply(MHD_Connection* connection, const Exchange& exchange) {
  const unsigned refusal = exchange.RefusalStatus();
  ReplyMessage reply = refusal != 0 ? Refusal(refusal) : answer_(exchange.Message());
  const unsigned status = reply.Status;
  return MHD_queue_response(connection, status,
                            MakeResponse(std::move(reply), isLastReply_ || exchange.IsHopeless()).get());
}

void HttpHost::Daemon::OnCompleted(void* self, MHD_Connection* connection, void** /*context*/,
                                   MHD_RequestTerminationCode /*code*/) {
  Daemon& daemon = *static_cast<Daemon*>(self);
  Client& client = ClientOf(connection);
  ConnectionWatch::Extend(client.Watched, daemon.limits_.Inactivity + daemon.limits_.Receiving);
  daemon.EndExchange(client);
}

void HttpHost::Daemon::EndExchange(Client& client) {
  const std::unique_ptr<Exchange> ended = std::exchange(client.Current, nullptr);
  if (ended == nullptr || !ended->HasBegun()) return;
  const std::lock_guard lock(runningMutex_);
  --running_;
  if (running_ == 0) ended_.notify_all();
}

void HttpHost::Daemon::CountOut(Client& newcomer) {
  if (!std::exchange(newcomer.IsNew, false)) return;
  const std::lock_guard lock(runningMutex_);
  --newcomers_;
  if (newcomers_ == 0) ended_.notify_all();
}

void HttpHost::Daemon::OnConnection(void* self, MHD_Connection* connection, void** client,
                                    MHD_ConnectionNotificationCode code) {
  Daemon& daemon = *static_cast<Daemon*>(self);
  if (code == MHD_CONNECTION_NOTIFY_CLOSED) {
    const std::unique_ptr<Client> gone(static_cast<Client*>(*client));
    daemon.EndExchange(*gone);
    daemon.CountOut(*gone);
    daemon.watch_.Remove(gone->Watched);
    return;
  }
  const auto* socket = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CONNECTION_FD);
  ConnectionWatch::Watched& watched = daemon.watch_.Add(socket->connect_fd, daemon.limits_.Receiving);
  *client = std::make_unique<Client>(Client{watched, nullptr}).release();
  const std::lock_guard lock(daemon.runningMutex_);
  ++daemon.newcomers_;
}

HttpHost::HttpHost(ListeningSocket socket, unsigned threads, const HostLimits& limits, Answerer answer)
    : daemon_(std::make_unique<Daemon>(std::move(socket), threads, limits, std::move(answer))) {}

HttpHost::~HttpHost() = default;

void HttpHost::CloseConnectionsAfterReply() {
  daemon_->CloseConnectionsAfterReply();
}

std::size_t HttpHost::RunningRequests() const {
  return daemon_->RunningRequests();
}

}  // namespace orlune
