#include "http/http_host.h"

#include <atomic>
#include <stdexcept>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <gnutls/abstract.h>
#include <gnutls/gnutls.h>
#include <microhttpd.h>
#include <sys/socket.h>
#include <unistd.h>

#include "http/admission.h"
#include "http/connection_acceptor.h"
#include "http/mhd_connection.h"
#include "http/mhd_response.h"
#include "http/request_reader.h"
#include "http/task_queue.h"

namespace orlune {
namespace {

using DaemonThread = std::unique_ptr<MHD_Daemon, decltype(&MHD_stop_daemon)>;

ClientConnection& ClientOf(MHD_Connection* connection) {
  const auto* context = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_SOCKET_CONTEXT);
  return *static_cast<ClientConnection*>(context->socket_context);
}

void SendRefusal(int socket, const std::string& refusal) {
  static_cast<void>(send(socket, refusal.data(), refusal.size(), MSG_NOSIGNAL | MSG_DONTWAIT));
}

std::vector<MHD_OptionItem> TlsOptions() {
  static char priorities[] = "NORMAL:-VERS-ALL:+VERS-TLS1.3:+VERS-TLS1.2:%SERVER_PRECEDENCE";
  // libmicrohttpd wants a certificate at the start; each session is given its own before it begins.
  static const auto kNoCertificate = [](gnutls_session_t, const gnutls_datum_t*, int,
                                        const gnutls_pk_algorithm_t*, int, gnutls_pcert_st**, unsigned*,
                                        gnutls_privkey_t*) { return -1; };
  gnutls_certificate_retrieve_function2* noCertificate = +kNoCertificate;
  return {{MHD_OPTION_HTTPS_PRIORITIES, 0, priorities},
          {MHD_OPTION_HTTPS_CERT_CALLBACK, 0, reinterpret_cast<void*>(noCertificate)}};
}

}  // namespace

class HttpHost::Daemon {
 public:
  explicit Daemon(HostParts parts);
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

  DaemonThread StartThread();
  void Receive(const AcceptedConnection& accepted);
  MHD_Result ReadHeaders(MHD_Connection* connection, std::string_view method, const char* version);
  MHD_Result ReadBody(MHD_Connection* connection, std::string_view piece);
  MHD_Result Reply(MHD_Connection* connection);
  MHD_Result AnswerLater(MHD_Connection* connection);
  ReplyMessage AnswerOrRefuse(const RequestMessage& request) const;
  MHD_Result RefuseAsBusy(MHD_Connection* connection, unsigned status);
  MHD_Result Queue(MHD_Connection* connection, ReplyMessage reply, bool isLast);

  const HostLimits limits_;
  const std::function<ReplyMessage(const RequestMessage&)> answer_;
  const std::function<std::optional<ReplyMessage>(const RequestMessage&)> answerAtOnce_;
  const BodyRulesAt bodyRulesAt_;
  const std::vector<Header> commonHeaders_;
  const std::vector<Header> partHeaders_ = HeadersOfParts(commonHeaders_);
  const std::string noPlace_ = RawRefusal(BusyRefusal(MHD_HTTP_SERVICE_UNAVAILABLE), commonHeaders_);
  const TrustedProxies proxies_;
  const std::shared_ptr<const TlsCertificate> certificate_;
  const std::string hsts_;
  Admission admission_;
  OpenConnections connections_;
  std::atomic<bool> isLastReply_ = false;
  std::vector<DaemonThread> threads_;
  const std::function<bool(const RequestMessage&)> isLogin_;
  TaskQueue waitingAnswers_;
  TaskQueue waitingLogins_;  // a crowd of them holds up no save
  std::unique_ptr<ConnectionAcceptor> acceptor_;
};

HttpHost::Daemon::Daemon(HostParts parts)
    : limits_(parts.Limits),
      answer_(std::move(parts.Answer)),
      answerAtOnce_(std::move(parts.AnswerAtOnce)),
      bodyRulesAt_(std::move(parts.BodyRulesAt)),
      commonHeaders_(std::move(parts.CommonHeaders)),
      proxies_(std::move(parts.Proxies)),
      certificate_(std::move(parts.Certificate)),
      hsts_(parts.HstsLifetime.count() == 0 ? "" : fmt::format("max-age={}", parts.HstsLifetime.count())),
      admission_(limits_.Connections, proxies_, parts.Log),
      connections_(limits_.Times, parts.Threads),
      isLogin_(std::move(parts.IsLogin)),
      waitingAnswers_(answerAtOnce_ ? parts.WaitingThreads : 0, limits_.WaitingAnswers),
      waitingLogins_(isLogin_ ? parts.WaitingThreads / 4 : 0, limits_.WaitingAnswers) {
  for (unsigned i = 0; i < parts.Threads; ++i) threads_.push_back(StartThread());
  acceptor_ = std::make_unique<ConnectionAcceptor>(
      std::move(parts.Socket), parts.Log, [this](const AcceptedConnection& accepted) { Receive(accepted); });
}

HttpHost::Daemon::~Daemon() {
  isLastReply_ = true;
  acceptor_->Stop();
  connections_.AwaitReplies();
  waitingAnswers_.Close();
  waitingLogins_.Close();
  connections_.AwaitReplies();
  threads_.clear();
}

// Each thread is a daemon of its own, so that a connection can be given to the one that has least to do.
DaemonThread HttpHost::Daemon::StartThread() {
  unsigned flags = MHD_USE_EPOLL_INTERNAL_THREAD | MHD_ALLOW_SUSPEND_RESUME | MHD_USE_NO_LISTEN_SOCKET;
  std::vector<MHD_OptionItem> options;
  if (certificate_ != nullptr) {
    flags |= MHD_USE_TLS;
    options = TlsOptions();
  }
  options.push_back({MHD_OPTION_END, 0, nullptr});
  DaemonThread thread(
      MHD_start_daemon(flags, 0, nullptr, nullptr, &OnRequest, this,                               //
                       MHD_OPTION_CONNECTION_LIMIT, static_cast<unsigned>(limits_.MostSockets()),  //
                       MHD_OPTION_CONNECTION_MEMORY_LIMIT, limits_.HeaderBytes,                    //
                       MHD_OPTION_URI_LOG_CALLBACK, &OnTarget, this,                               //
                       MHD_OPTION_NOTIFY_COMPLETED, &OnCompleted, this,                            //
                       MHD_OPTION_NOTIFY_CONNECTION, &OnConnection, this,                          //
                       MHD_OPTION_ARRAY, options.data(), MHD_OPTION_END),
      &MHD_stop_daemon);
  if (thread == nullptr) throw std::runtime_error("cannot start the HTTP server's threads");
  return thread;
}

void HttpHost::Daemon::Receive(const AcceptedConnection& accepted) {
  std::optional<AdmissionTicket> ticket = admission_.AdmitConnection(IpAddress(accepted.PeerAddress()));
  if (!ticket) {
    if (certificate_ == nullptr) SendRefusal(accepted.Socket, noPlace_);
    close(accepted.Socket);
    return;
  }
  const ClientConnection& client = connections_.Accept(accepted.Socket, *std::move(ticket));
  MHD_Daemon* thread = threads_[client.Thread()].get();
  if (MHD_add_connection(thread, accepted.Socket, &accepted.PeerAddress(), accepted.PeerSize) != MHD_YES)
    connections_.Close(accepted.Socket);
}

void HttpHost::Daemon::OnConnection(void* self, MHD_Connection* connection, void** client,
                                    MHD_ConnectionNotificationCode code) {
  Daemon& daemon = *static_cast<Daemon*>(self);
  const int socket = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CONNECTION_FD)->connect_fd;
  if (code == MHD_CONNECTION_NOTIFY_CLOSED) return daemon.connections_.Close(socket);
  ClientConnection& served = daemon.connections_.Serve(socket);
  if (daemon.certificate_ != nullptr) served.Use(daemon.certificate_->ShowIn(TlsSessionOf(connection)));
  *client = &served;
}

void* HttpHost::Daemon::OnTarget(void* self, const char* target, MHD_Connection* connection) {
  ClientConnection& client = ClientOf(connection);
  const Daemon& daemon = *static_cast<Daemon*>(self);
  const RequestReader& request =
      client.StartRequest(target == nullptr ? "" : target, daemon.limits_.BodyBytes, daemon.bodyRulesAt_);
  const bool isTls = daemon.certificate_ != nullptr;
  if (request.MustClose())
    client.Abort(isTls ? "" : RawRefusal(Refusal(request.RefusalStatus()), daemon.commonHeaders_));
  return nullptr;
}

MHD_Result HttpHost::Daemon::OnRequest(void* self, MHD_Connection* connection, const char* /*url*/,
                                       const char* method, const char* version, const char* body,
                                       std::size_t* bodySize, void** /*context*/) {
  try {
    Daemon& daemon = *static_cast<Daemon*>(self);
    ClientConnection& client = ClientOf(connection);
    if (!client.Request().HasHeaders()) return daemon.ReadHeaders(connection, method, version);
    if (auto reply = client.TakeReply())
      return daemon.Queue(connection, *std::move(reply), client.Request().MustClose());
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
  if (client.Ticket().IsRefused) return RefuseAsBusy(connection, MHD_HTTP_SERVICE_UNAVAILABLE);
  if (client.Ticket().IsProxy) {
    auto place = admission_.AdmitRequest(client.Request().Message());
    if (!place) return RefuseAsBusy(connection, MHD_HTTP_TOO_MANY_REQUESTS);
    client.Hold(*std::move(place));
  }
  return client.Request().MustClose() ? Reply(connection) : MHD_YES;
}

MHD_Result HttpHost::Daemon::ReadBody(MHD_Connection* connection, std::string_view piece) {
  ClientConnection& client = ClientOf(connection);
  RequestReader& request = client.Request();
  if (!piece.empty()) {
    if (!request.ReadBody(piece)) return MHD_NO;
    if (!client.HoldBody(request.KeptBytes())) request.RefuseBody(MHD_HTTP_SERVICE_UNAVAILABLE);
    return MHD_YES;
  }
  request.End();
  return Reply(connection);
}

MHD_Result HttpHost::Daemon::Reply(MHD_Connection* connection) {
  ClientConnection& client = ClientOf(connection);
  const RequestReader& request = client.Request();
  client.RequestReceived();
  if (const unsigned refusal = request.RefusalStatus(); refusal != 0)
    return Queue(connection,
                 refusal == MHD_HTTP_SERVICE_UNAVAILABLE ? BusyRefusal(refusal) : Refusal(refusal),
                 request.MustClose());
  std::optional<ReplyMessage> reply =
      answerAtOnce_ ? answerAtOnce_(request.Message()) : answer_(request.Message());
  return reply ? Queue(connection, *std::move(reply), request.MustClose()) : AnswerLater(connection);
}

// The connection's thread serves others until the reply is made; then it comes back to `OnRequest`.
MHD_Result HttpHost::Daemon::AnswerLater(MHD_Connection* connection) {
  ClientConnection& client = ClientOf(connection);
  const bool isLogin = isLogin_ && isLogin_(client.Request().Message());
  const auto deadline =
      std::chrono::steady_clock::now() + (isLogin ? limits_.LoginWaitingTime : limits_.WaitingTime);
  MHD_suspend_connection(connection);
  client.WaitForReply();
  const auto answer = [this, connection, &client, deadline](bool isClosing) {
    const bool isTooLate = isClosing || std::chrono::steady_clock::now() > deadline;
    client.GiveReply(isTooLate ? BusyRefusal(MHD_HTTP_SERVICE_UNAVAILABLE)
                               : AnswerOrRefuse(client.Request().Message()));
    MHD_resume_connection(connection);
  };
  if (!(isLogin ? waitingLogins_ : waitingAnswers_).Add(answer)) answer(true);
  return MHD_YES;
}

ReplyMessage HttpHost::Daemon::AnswerOrRefuse(const RequestMessage& request) const {
  try {
    return answer_(request);
  } catch (...) {
    return BusyRefusal(MHD_HTTP_SERVICE_UNAVAILABLE);  // out of memory
  }
}

// The rest of the request is not read.
MHD_Result HttpHost::Daemon::RefuseAsBusy(MHD_Connection* connection, unsigned status) {
  return Queue(connection, BusyRefusal(status), true);
}

MHD_Result HttpHost::Daemon::Queue(MHD_Connection* connection, ReplyMessage reply, bool isLast) {
  ClientConnection& client = ClientOf(connection);
  if (!client.HoldReply(reply.MemoryBytes())) reply = BusyRefusal(MHD_HTTP_SERVICE_UNAVAILABLE);
  client.StartReply();
  if (!hsts_.empty() && proxies_.SenderOf(client.Request().Message()).IsOverHttps)
    reply.Headers.emplace_back("Strict-Transport-Security", hsts_);
  const unsigned status = reply.Status;
  const ResponseFrame frame{isLastReply_ || isLast, client.Request().Message().Method == "HEAD"};
  const std::vector<Header>& headers = reply.IsDocument ? commonHeaders_ : partHeaders_;
  return MHD_queue_response(connection, status, MakeResponse(std::move(reply), headers, frame).get());
}

void HttpHost::Daemon::OnCompleted(void* /*self*/, MHD_Connection* connection, void** /*context*/,
                                   MHD_RequestTerminationCode /*code*/) {
  ClientOf(connection).EndRequest();
}

std::size_t HostLimits::MostSockets() const {
  return Admission::MostConnections(Connections);
}

HttpHost::HttpHost(HostParts parts) : daemon_(std::make_unique<Daemon>(std::move(parts))) {}

HttpHost::~HttpHost() = default;

void HttpHost::CloseConnectionsAfterReply() {
  daemon_->CloseConnectionsAfterReply();
}

std::size_t HttpHost::RunningRequests() const {
  return daemon_->RunningRequests();
}

}  // namespace orlune
