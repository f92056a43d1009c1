#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <spdlog/logger.h>

#include "http/body_rules.h"
#include "http/http_message.h"
#include "http/known_links.h"
#include "http/page_branch.h"
#include "http/page_compression.h"
#include "http/static_files.h"
#include "http/trusted_proxies.h"
#include "platform/clock.h"
#include "platform/database.h"
#include "platform/page_host.h"
#include "sessions/cookie_sealer.h"
#include "sessions/page_session.h"
#include "sessions/session_store.h"

namespace orlune {

/// Answers a request of a hosting page. Called by several threads at once.
using Page = std::function<void(const ScriptingContext&)>;

/// A hosting page with one kind of access to its database.
struct PageWithSessions {
  Page Answer;
  SessionStore& Sessions;  ///< of this page alone; outlives the website
};

/// A page at its address.
struct HostedPage {
  std::string Path;  ///< begins with "/"; letters, digits and "/._-~" only
  PageWithSessions Writing;
  /// Throws WriteRefused when the database would have to be written to.
  PageWithSessions Reading;
  std::vector<Companion> Companions{};
  std::vector<PageBranch> Branches{};
};

struct WebsiteParts {
  std::vector<HostedPage> Pages;  ///< at least one; "/" redirects to the first
  StaticFiles Files;              ///< served at every other address
  CookieSealer Sealer;
  TrustedProxies Proxies;
  const orlune::Clock& Clock;       ///< outlives the website, as the log does
  std::function<bool()> IsHealthy;  ///< decides the answer of "/healthz"
  spdlog::logger& Log;
  std::vector<std::string> AllowedHosts{};  ///< names to answer under, without ports; none: under any
  bool CompressesPages = false;             ///< for browsers that take it
};

/// Everything that is served: the hosting pages, "/healthz", and the files beside them. May be used by
/// several threads at once.
class Website {
 public:
  explicit Website(WebsiteParts parts) : parts_(std::move(parts)) {}

  /// Does not throw what a page throws: logs it and answers 500, or 503 when the database is unavailable.
  ReplyMessage Answer(const RequestMessage& request) { return AnswerWith(Access::kReadAndWrite, request); }
  /// The same without ever waiting for a writer of the database: nothing, without any effect, for what is
  /// posted and for any other request that turns out to write.
  std::optional<ReplyMessage> AnswerAtOnce(const RequestMessage& request);

  BodyRules BodyRulesOf(std::string_view path) const;

 private:
  /// An address below a hosting page's own that one of its branches answers.
  struct FoundBranch {
    const HostedPage& Page;
    const PageBranch& Branch;
    std::string_view Rest;  ///< of the address; its prefix may lack the last slash
  };

  ReplyMessage AnswerWith(Access access, const RequestMessage& request);
  bool MayAnswer(const RequestMessage& request) const;
  ReplyMessage AnswerAllowed(Access access, const RequestMessage& request, const Sender& sender);
  const HostedPage* FindPage(std::string_view path) const;
  std::optional<FoundBranch> FindBranch(std::string_view path) const;
  ReplyMessage AnswerBranch(Access access, const FoundBranch& found, const RequestMessage& message,
                            const Sender& sender) const;
  ReplyMessage AnswerPage(Access access, const HostedPage& page, const RequestMessage& message,
                          const Sender& sender);
  void SaveSession(const std::string& path, PageSession& session) const;
  /// Runs the page and saves its session. Nothing on success, else the reply.
  std::optional<ReplyMessage> RunPage(const std::string& path, const Page& page,
                                      const ScriptingContext& context, PageSession& session) const;
  /// Of the exception that is being handled: logs it, and refuses the request.
  ReplyMessage ReplyToFailure(const std::string& path) const;
  ReplyMessage AnswerOther(const RequestMessage& request) const;
  const HostedPage* FindCalDavPage() const;
  void LogReply(const RequestMessage& request, const std::string& shownPath, const Sender& sender,
                const ReplyMessage& reply, std::chrono::steady_clock::time_point begin) const;

  WebsiteParts parts_;
  KnownLinks links_{parts_.Files};
  PageCompression compression_;
};

}  // namespace orlune
