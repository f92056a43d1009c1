#include "http/http_host.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <stdexcept>
#include <utility>

#include <microhttpd.h>
#include <sys/socket.h>
#include <unistd.h>

#include "http/mhd_response.h"
#include "http/request_reader.h"

namespace orlune {
namespace {

ClientConnection& ClientOf(MHD_Connection* connection) {
  const auto* context = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_SOCKET_CONTEXT);
  return *static_cast<ClientConnection*>(context->socket_context);
}

}  // namespace

class HttpHost::Daemon {
 public:
  Daemon(ListeningSocket socket, unsigned threads, const HostLimits& limits, Answerer answer);
  ~Daemon();
  Daemon(const Daemon&) = delete;
  Daemon& operator=(const Daemon&) = delete;

  void CloseConnectionsAfterReply() { isLastReply_ = true; }
  std::size_t RunningRequests() const { return connections_.RunningRequests(); }

 private:
  static void OnConnection(void* self, MHD_Connection* connection, void** client,
                           MHD_ConnectionNotificationCode code);
  static void* OnTarget(void* self, const char* target, MHD_Connection* connection);
  static MHD_Result OnRequest(void* self, MHD_Connection* connection, const char* url, const char* method,
                              const char* version, const char* body, std::size_t* bodySize, void** context);
  static void OnCompleted(void* self, MHD_Connection* connection, void** context,
                          MHD_RequestTerminationCode code);

  MHD_Result ReadHeaders(MHD_Connection* connection, std::string_view method, const char* version);
  MHD_Result ReadBody(MHD_Connection* connection, std::string_view piece);
  MHD_Result Reply(MHD_Connection* connection);
  void AcceptWaiting(int listening);

  const HostLimits limits_;
  const Answerer answer_;
  OpenConnections connections_;
  std::atomic<bool> isLastReply_ = false;
  MHD_Daemon* daemon_;
};

HttpHost::Daemon::Daemon(ListeningSocket socket, unsigned threads, const HostLimits& limits, Answerer answer)
    : limits_(limits), answer_(std::move(answer)), connections_(limits.Times) {
  const int listening = socket.Release();
  const unsigned connections = std::max(limits.Connections, threads);
  daemon_ =
      MHD_start_daemon(MHD_USE_EPOLL_INTERNAL_THREAD | MHD_USE_ITC, 0, nullptr, nullptr, &OnRequest, this,  //
                       MHD_OPTION_LISTEN_SOCKET, listening,                                                 //
                       MHD_OPTION_THREAD_POOL_SIZE, threads,                                                //
                       MHD_OPTION_CONNECTION_LIMIT, connections,                                            //
                       MHD_OPTION_PER_IP_CONNECTION_LIMIT, limits.ConnectionsPerAddress,                    //
                       MHD_OPTION_CONNECTION_MEMORY_LIMIT, limits.HeaderBytes,                              //
                       MHD_OPTION_STRICT_FOR_CLIENT, 1,                                                     //
                       MHD_OPTION_URI_LOG_CALLBACK, &OnTarget, this,                                        //
                       MHD_OPTION_NOTIFY_COMPLETED, &OnCompleted, this,                                     //
                       MHD_OPTION_NOTIFY_CONNECTION, &OnConnection, this, MHD_OPTION_END);
  if (daemon_ != nullptr) return;
  close(listening);
  throw std::runtime_error("cannot start the HTTP server's threads");
}

HttpHost::Daemon::~Daemon() {
  isLastReply_ = true;
  const int listening = MHD_quiesce_daemon(daemon_);
  if (listening != MHD_INVALID_SOCKET) {
    AcceptWaiting(listening);
    close(listening);
  }
  connections_.AwaitReplies();
  MHD_stop_daemon(daemon_);
}

// Closing a listening socket resets the connections that wait in its queue, and a proxy does not send a form
// twice. So those are accepted first.
void HttpHost::Daemon::AcceptWaiting(int listening) {
  for (unsigned accepted = 0; accepted < limits_.Connections; ++accepted) {
    sockaddr_storage peer{};
    socklen_t length = sizeof peer;
    auto* const address = reinterpret_cast<sockaddr*>(&peer);
    const int socket = accept4(listening, address, &length, SOCK_NONBLOCK | SOCK_CLOEXEC);
    if (socket < 0 && (errno == EINTR || errno == ECONNABORTED)) continue;
    if (socket < 0) return;
    const ClientConnection& client = connections_.Accept(socket);
    if (MHD_add_connection(daemon_, socket, address, length) != MHD_YES) connections_.Close(client);
  }
}

void HttpHost::Daemon::OnConnection(void* self, MHD_Connection* connection, void** client,
                                    MHD_ConnectionNotificationCode code) {
  OpenConnections& connections = static_cast<Daemon*>(self)->connections_;
  if (code == MHD_CONNECTION_NOTIFY_CLOSED)
    return connections.Close(*static_cast<ClientConnection*>(*client));
  const auto* socket = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CONNECTION_FD);
  *client = &connections.Serve(socket->connect_fd);
}

void* HttpHost::Daemon::OnTarget(void* self, const char* target, MHD_Connection* connection) {
  ClientConnection& client = ClientOf(connection);
  const RequestReader& request =
      client.StartRequest(target == nullptr ? "" : target, static_cast<Daemon*>(self)->limits_.BodyBytes);
  if (request.MustClose()) client.Abort(RawRefusal(request.RefusalStatus()));
  return nullptr;
}

MHD_Result HttpHost::Daemon::OnRequest(void* self, MHD_Connection* connection, const char* /*url*/,
                                       const char* method, const char* version, const char* body,
                                       std::size_t* bodySize, void** /*context*/) {
  try {
    Daemon& daemon = *static_cast<Daemon*>(self);
    if (!ClientOf(connection).Request().HasHeaders()) return daemon.ReadHeaders(connection, method, version);
    const std::string_view piece(body, *bodySize);
    *bodySize = 0;
    return daemon.ReadBody(connection, piece);
  } catch (...) {
    return MHD_NO;  // out of memory: libmicrohttpd closes the connection
  }
}

MHD_Result HttpHost::Daemon::ReadHeaders(MHD_Connection* connection, std::string_view method,
                                         const char* version) {
  ClientConnection& client = ClientOf(connection);
  if (client.Request().MustClose()) return MHD_NO;
  client.HeadersReceived();
  client.Request().ReadHeaders(connection, method, version);
  return client.Request().MustClose() ? Reply(connection) : MHD_YES;
}

MHD_Result HttpHost::Daemon::ReadBody(MHD_Connection* connection, std::string_view piece) {
  ClientConnection& client = ClientOf(connection);
  if (!piece.empty()) return client.Request().ReadBody(piece) ? MHD_YES : MHD_NO;
  client.Request().End();
  return Reply(connection);
}

MHD_Result HttpHost::Daemon::Reply(MHD_Connection* connection) {
  ClientConnection& client = ClientOf(connection);
  const RequestReader& request = client.Request();
  client.RequestReceived();
  const unsigned refusal = request.RefusalStatus();
  ReplyMessage reply = refusal != 0 ? Refusal(refusal) : answer_(request.Message());
  client.StartReply();
  const unsigned status = reply.Status;
  return MHD_queue_response(connection, status,
                            MakeResponse(std::move(reply), isLastReply_ || request.MustClose()).get());
}

void HttpHost::Daemon::OnCompleted(void* /*self*/, MHD_Connection* connection, void** /*context*/,
                                   MHD_RequestTerminationCode /*code*/) {
  ClientOf(connection).EndRequest();
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
