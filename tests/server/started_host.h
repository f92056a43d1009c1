#pragma once

#include <chrono>
#include <memory>
#include <sstream>
#include <string>

#include <spdlog/sinks/ostream_sink.h>

#include "server/clocks.h"
#include "server/http_host.h"
#include "server/website.h"
#include "support/temporary_folder.h"

namespace orlune::testing {

/// A server on a free port with the pages "/a.asp" and "/a.asp/b.asp", which answer as the test says.
class StartedHost {
 public:
  explicit StartedHost(const HostLimits& limits = {}, std::vector<IpNetwork> proxies = {})
      : sessions_(std::chrono::minutes(60), 1000, [this] { return steadyNow_; }),
        log_("test", std::make_shared<spdlog::sinks::ostream_sink_mt>(logText_)),
        website_({{{"/a.asp", [this](const ScriptingContext& context) { Answer(context); }},
                   {"/a.asp/b.asp", [this](const ScriptingContext& context) { Answer(context); }}},
                  StaticFiles(folder_.Path()),
                  sessions_,
                  CookieSealer(SecretKey{1, 2, 3}),
                  TrustedProxies(std::move(proxies)),
                  clock_,
                  [this] { return IsHealthy; },
                  log_}) {
    ListeningSocket socket("127.0.0.1:0");
    address_ = socket.Address();
    host_ = std::make_unique<HttpHost>(std::move(socket), 2, limits, [this](const RequestMessage& request) {
      return website_.Answer(request);
    });
  }

  const std::string& Address() const { return address_; }
  const TemporaryFolder& Folder() const { return folder_; }
  std::string LogText() const { return logText_.str(); }
  void Elapse(std::chrono::minutes time) { steadyNow_ += time; }
  std::size_t RunningRequests() const { return host_->RunningRequests(); }
  void CloseConnectionsAfterReply() { host_->CloseConnectionsAfterReply(); }
  void Stop() { host_ = nullptr; }

  Page Answer = [](const ScriptingContext&) {};
  bool IsHealthy = true;

 private:
  TemporaryFolder folder_;
  std::chrono::steady_clock::time_point steadyNow_;
  SessionStore sessions_;
  std::ostringstream logText_;
  spdlog::logger log_;
  FixedClock clock_{{Date(std::chrono::days(12'000)), std::chrono::hours(12)}};
  Website website_;
  std::string address_;
  std::unique_ptr<HttpHost> host_;
};

}  // namespace orlune::testing
