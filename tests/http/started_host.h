#pragma once

#include <atomic>
#include <chrono>
#include <memory>
#include <sstream>
#include <string>

#include <spdlog/sinks/ostream_sink.h>

#include "app/clocks.h"
#include "http/http_host.h"
#include "http/website.h"
#include "platform/database.h"
#include "sessions/memory_session_store.h"
#include "support/temporary_folder.h"

namespace orlune::testing {

/// Sessions that can be taken away.
class BreakableSessions : public SessionStore {
 public:
  explicit BreakableSessions(MemorySessionStore::TimeSource now)
      : inner_(std::chrono::minutes(60), 1000, std::move(now)) {}

  std::optional<KeptSession> Find(std::string_view pagePath,
                                  std::span<const std::string_view> candidates) override {
    return Reached().Find(pagePath, candidates);
  }
  std::string Start(std::string_view pagePath, const NamedTexts& values, std::string_view endedId) override {
    return Reached().Start(pagePath, values, endedId);
  }
  void Change(std::string_view pagePath, const KeptSession& found, const NamedTexts& changes) override {
    Reached().Change(pagePath, found, changes);
  }
  void End(std::string_view pagePath, std::string_view id) override { Reached().End(pagePath, id); }

  std::atomic<bool> IsAway = false;

 private:
  SessionStore& Reached() {
    if (IsAway) throw DatabaseError("the sessions are away");
    return inner_;
  }

  MemorySessionStore inner_;
};

/// A server on a free port with the pages "/a.asp" and "/a.asp/b.asp", which answer as the test says.
class StartedHost {
 public:
  explicit StartedHost(const HostLimits& limits = {}, std::vector<IpNetwork> proxies = {})
      : log_("test", std::make_shared<spdlog::sinks::ostream_sink_mt>(logText_)),
        website_({{{"/a.asp", [this](const ScriptingContext& context) { Answer(context); }},
                   {"/a.asp/b.asp", [this](const ScriptingContext& context) { Answer(context); }}},
                  StaticFiles(folder_.Path()),
                  Sessions,
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
  BreakableSessions Sessions{[this] { return steadyNow_; }};

 private:
  TemporaryFolder folder_;
  std::chrono::steady_clock::time_point steadyNow_;
  std::ostringstream logText_;
  spdlog::logger log_;
  FixedClock clock_{{Date(std::chrono::days(12'000)), std::chrono::hours(12)}};
  Website website_;
  std::string address_;
  std::unique_ptr<HttpHost> host_;
};

}  // namespace orlune::testing
