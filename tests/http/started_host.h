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

/// Sessions that cannot be written while they are away.
class BreakableSessions : public MemorySessionStore {
 public:
  using MemorySessionStore::MemorySessionStore;

  std::string Start(const NamedTexts& values, std::string_view endedId) override {
    RequireStore();
    return MemorySessionStore::Start(values, endedId);
  }
  void Change(const KeptSession& found, const NamedTexts& changes) override {
    RequireStore();
    MemorySessionStore::Change(found, changes);
  }

  std::atomic<bool> IsAway = false;

 private:
  void RequireStore() const {
    if (IsAway) throw DatabaseUnavailable("away");
  }
};

/// A server on a free port with the pages "/a.asp", with "/a.asp/texts", "/a.asp/files" and the branches
/// "/dav/" and "/feed/", and "/a.asp/b.asp", which answer as the test says.
class StartedHost {
 public:
  explicit StartedHost(const HostLimits& limits = {}, const std::vector<IpNetwork>& proxies = {},
                       std::vector<std::string> allowedHosts = {}, SiteOptions options = {})
      : website_({{{"/a.asp",
                    PageWith(sessions_),
                    PageWith(sessions_),
                    {{"/texts"}, {"/files", true, 500'000}},
                    Branches()},
                   {"/a.asp/b.asp", PageWith(otherSessions_), PageWith(otherSessions_)}},
                  StaticFiles(folder_.Path(), options),
                  CookieSealer(SecretKey{1, 2, 3}),
                  TrustedProxies(proxies),
                  clock_,
                  [this] { return IsHealthy; },
                  log_,
                  std::move(allowedHosts),
                  options.Compresses}) {
    ListeningSocket socket("127.0.0.1:0");
    address_ = socket.Address();
    host_ = std::make_unique<HttpHost>(
        HostParts{std::move(socket), 2, limits, TrustedProxies(proxies), log_,
                  [this](const RequestMessage& request) { return website_.Answer(request); },
                  [this](const RequestMessage& request) { return website_.AnswerAtOnce(request); },
                  [this](std::string_view path) { return website_.BodyRulesOf(path); }});
  }

  const std::string& Address() const { return address_; }
  const TemporaryFolder& Folder() const { return folder_; }
  HttpHost& Host() { return *host_; }
  void Stop() { host_ = nullptr; }
  /// What it logged until it was stopped.
  std::string LogText() const { return logText_.str(); }

  BreakableSessions& Sessions() { return sessions_; }

  std::function<ReplyMessage(Access, const BranchRequest&)> AnswerBranch;
  Page Answer = [](const ScriptingContext&) {};
  bool IsHealthy = true;

 private:
  std::vector<PageBranch> Branches() {
    const auto answer = [this](Access access) {
      return [this, access](const BranchRequest& request) { return AnswerBranch(access, request); };
    };
    return {{"/dav/", answer(Access::kReadAndWrite), answer(Access::kRead), 500'000, false},
            {"/feed/", answer(Access::kReadAndWrite), answer(Access::kRead), 0, true}};
  }
  PageWithSessions PageWith(SessionStore& sessions) {
    return {[this](const ScriptingContext& context) { Answer(context); }, sessions};
  }

  BreakableSessions sessions_{std::chrono::minutes(60), 1000};
  MemorySessionStore otherSessions_{std::chrono::minutes(60), 1000};
  TemporaryFolder folder_;
  std::ostringstream logText_;
  spdlog::logger log_{"test", std::make_shared<spdlog::sinks::ostream_sink_mt>(logText_)};
  FixedClock clock_{{Date(std::chrono::days(12'000)), std::chrono::hours(12)}};
  Website website_;
  std::string address_;
  std::unique_ptr<HttpHost> host_;
};

}  // namespace orlune::testing
