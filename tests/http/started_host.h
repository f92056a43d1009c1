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

/// Sessions in memory that fail while `IsAway`.
class BreakableSessions : public SessionStore {
 public:
  std::optional<KeptSession> Find(std::span<const std::string_view> candidates) override {
    return Store().Find(candidates);
  }
  std::string Start(const NamedTexts& values, std::string_view endedId) override {
    return Store().Start(values, endedId);
  }
  void Change(const KeptSession& found, const NamedTexts& changes) override {
    Store().Change(found, changes);
  }
  void End(std::string_view id) override { Store().End(id); }

  std::atomic<bool> IsAway = false;

 private:
  SessionStore& Store() {
    if (IsAway) throw DatabaseError("the sessions are away");
    return store_;
  }

  MemorySessionStore store_{std::chrono::minutes(60), 1000};
};

/// A server on a free port with the pages "/a.asp" and "/a.asp/b.asp", which answer as the test says.
class StartedHost {
 public:
  explicit StartedHost(const HostLimits& limits = {}, std::vector<IpNetwork> proxies = {})
      : website_(
            {{{"/a.asp", [this](const ScriptingContext& context) { Answer(context); }, Sessions},
              {"/a.asp/b.asp", [this](const ScriptingContext& context) { Answer(context); }, otherSessions_}},
             StaticFiles(folder_.Path()),
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
  HttpHost& Host() { return *host_; }
  void Stop() { host_ = nullptr; }
  /// What it logged until it was stopped.
  std::string LogText() const { return logText_.str(); }

  Page Answer = [](const ScriptingContext&) {};
  bool IsHealthy = true;
  BreakableSessions Sessions;  ///< of "/a.asp"

 private:
  BreakableSessions otherSessions_;
  TemporaryFolder folder_;
  std::ostringstream logText_;
  spdlog::logger log_{"test", std::make_shared<spdlog::sinks::ostream_sink_mt>(logText_)};
  FixedClock clock_{{Date(std::chrono::days(12'000)), std::chrono::hours(12)}};
  Website website_;
  std::string address_;
  std::unique_ptr<HttpHost> host_;
};

}  // namespace orlune::testing
