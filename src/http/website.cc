#include "http/website.h"

#include <algorithm>
#include <exception>

#include "base/log_text.h"
#include "http/cookies.h"
#include "http/host_name.h"
#include "http/http_request.h"
#include "http/http_response.h"
#include "http/request_guard.h"

namespace orlune {
namespace {

constexpr const char* kSessionCookie = "orlune_session";

class PageServer : public Server {
 public:
  PageServer(KnownLinks& links, std::string_view pagePath) : links_(links), pagePath_(pagePath) {}
  bool Serves(std::string_view link) const override {
    return links_.IsServed(pagePath_, link, std::chrono::steady_clock::now());
  }

 private:
  KnownLinks& links_;
  std::string_view pagePath_;
};

bool HasSameSiteCookie(const RequestMessage& request) {
  return !CookieValues(request.Headers.Find("Cookie"), kSameSiteCookie).empty();
}

void AddCookie(ReplyMessage& reply, const BrowserCookie& cookie) {
  reply.Headers.emplace_back("Set-Cookie", FormatSetCookie(cookie));
}

void AddSessionCookies(ReplyMessage& reply, const std::string& id, BrowserCookie cookie) {
  cookie.Value = id;
  if (id.empty()) cookie.Lifetime = std::chrono::seconds(0);
  AddCookie(reply, cookie);
  AddCookie(reply, SameSiteCookieBeside(cookie));
}

bool SetsSameSiteCookie(const ReplyMessage& reply) {
  return std::ranges::any_of(reply.Headers, [](const Header& header) {
    return header.first == "Set-Cookie" && header.second.starts_with(kSameSiteCookie);
  });
}

ReplyMessage MethodNotAllowed(const char* allowed) {
  ReplyMessage reply = Refusal(405);
  reply.Headers.emplace_back("Allow", allowed);
  return reply;
}

/// The companion of `page` at `path`, or null.
const Companion* FindCompanion(const HostedPage& page, std::string_view path) {
  if (!path.starts_with(page.Path)) return nullptr;
  const auto found = std::ranges::find(page.Companions, path.substr(page.Path.size()), &Companion::Name);
  return found == page.Companions.end() ? nullptr : &*found;
}

bool IsAddressOf(const HostedPage& page, std::string_view path) {
  return path == page.Path || FindCompanion(page, path) != nullptr;
}

bool IsReading(const RequestMessage& request) {
  return request.Method == "GET" || request.Method == "HEAD";
}

/// The path as the log shows it, without secrets.
std::string ShownPath(const HostedPage& page, const PageBranch& branch, const std::string& path) {
  return branch.IsSecret ? page.Path + branch.Prefix + "***" : OneLine(path);
}

ReplyMessage MovedTo(const std::string& path) {
  ReplyMessage reply = RedirectTo(path);
  reply.Status = 301;
  return reply;
}

/// Whether the body is one that the client names later by its tag, and so gets byte for byte.
bool HasTag(const ReplyMessage& reply) {
  return std::ranges::find(reply.Headers, "ETag", &Header::first) != reply.Headers.end();
}

/// Where clients ask that know only the server's name (RFC 6764, section 5; "/" is what some try then).
bool LooksForCalDav(const RequestMessage& request) {
  return request.Path == "/.well-known/caldav" ||
         (request.Path == "/" && (request.Method == "PROPFIND" || request.Method == "OPTIONS"));
}

}  // namespace

std::optional<ReplyMessage> Website::AnswerAtOnce(const RequestMessage& request) {
  try {
    return AnswerWith(Access::kRead, request);
  } catch (const WriteRefused&) {
    return std::nullopt;
  }
}

BodyRules Website::BodyRulesOf(std::string_view path) const {
  if (const auto found = FindBranch(path)) return {.MostRawBytes = found->Branch.BodyBytes};
  const HostedPage* page = FindPage(path);
  const Companion* companion = page == nullptr ? nullptr : FindCompanion(*page, path);
  return {.MostFileBytes = companion == nullptr ? 0 : companion->MostFileBytes};
}

ReplyMessage Website::AnswerWith(Access access, const RequestMessage& request) {
  const Sender sender = parts_.Proxies.SenderOf(request);
  ReplyMessage reply = MayAnswer(request) ? AnswerAllowed(access, request, sender) : Refusal(421);
  if (sender.IsOverHttps && reply.IsDocument)
    reply.Headers.emplace_back("Cross-Origin-Opener-Policy", "same-origin");
  return reply;
}

/// Health checks call a server by its address.
bool Website::MayAnswer(const RequestMessage& request) const {
  return request.Path == "/healthz" || IsAllowedHost(request.Headers.Find("Host"), parts_.AllowedHosts);
}

ReplyMessage Website::AnswerAllowed(Access access, const RequestMessage& request, const Sender& sender) {
  const auto begin = std::chrono::steady_clock::now();
  if (const auto found = FindBranch(request.Path)) {
    ReplyMessage reply = AnswerBranch(access, *found, request, sender);
    if (parts_.CompressesPages && !HasTag(reply)) compression_.Apply(request, sender.IsOverHttps, reply);
    LogReply(request, ShownPath(found->Page, found->Branch, request.Path), sender, reply, begin);
    return reply;
  }
  const HostedPage* page = FindPage(request.Path);
  if (page == nullptr) return AnswerOther(request);
  ReplyMessage reply = AnswerPage(access, *page, request, sender);
  if (parts_.CompressesPages) compression_.Apply(request, sender.IsOverHttps, reply);
  LogReply(request, request.Path, sender, reply, begin);
  return reply;
}

void Website::LogReply(const RequestMessage& request, const std::string& shownPath, const Sender& sender,
                       const ReplyMessage& reply, std::chrono::steady_clock::time_point begin) const {
  const std::chrono::duration<double, std::milli> spent = std::chrono::steady_clock::now() - begin;
  parts_.Log.info("{} {} {} {} {} bytes {:.1f} ms", sender.Address.Text(), OneLine(request.Method), shownPath,
                  reply.Status, reply.BodySize(), spent.count());
}

std::optional<Website::FoundBranch> Website::FindBranch(std::string_view path) const {
  for (const HostedPage& page : parts_.Pages) {
    if (!path.starts_with(page.Path)) continue;
    const std::string_view below = path.substr(page.Path.size());
    for (const PageBranch& branch : page.Branches) {
      const std::string_view prefix = branch.Prefix;
      if (below.starts_with(prefix)) return FoundBranch{page, branch, below.substr(prefix.size())};
      if (below == prefix.substr(0, prefix.size() - 1)) return FoundBranch{page, branch, ""};
    }
  }
  return std::nullopt;
}

ReplyMessage Website::AnswerBranch(Access access, const FoundBranch& found, const RequestMessage& message,
                                   const Sender& sender) const {
  if (!message.Path.ends_with('/') && found.Rest.empty())
    return MovedTo(found.Page.Path + found.Branch.Prefix);
  const auto& answer = access == Access::kRead ? found.Branch.Reading : found.Branch.Writing;
  try {
    ReplyMessage reply = answer({message, sender, found.Page.Path, found.Rest});
    reply.IsDocument = false;
    return reply;
  } catch (...) {
    return ReplyToFailure(ShownPath(found.Page, found.Branch, message.Path));
  }
}

const HostedPage* Website::FindPage(std::string_view path) const {
  const auto found = std::find_if(parts_.Pages.begin(), parts_.Pages.end(),
                                  [path](const HostedPage& page) { return IsAddressOf(page, path); });
  return found == parts_.Pages.end() ? nullptr : &*found;
}

ReplyMessage Website::AnswerPage(Access access, const HostedPage& page, const RequestMessage& message,
                                 const Sender& sender) {
  const Companion* companion = FindCompanion(page, message.Path);
  const bool takesForms = companion == nullptr || companion->TakesForms;
  if (!IsReading(message) && !(takesForms && message.Method == "POST"))
    return MethodNotAllowed(takesForms ? "GET, HEAD, POST" : "GET, HEAD");
  const DateTime now = parts_.Clock.Now();
  HttpRequest request(message, page.Path, parts_.Sealer, now.Day, sender);
  const bool couldChange = CouldChangeSomething(message, request.Query());
  if (couldChange && message.Method == "HEAD") return MethodNotAllowed("GET, POST");
  if (couldChange && ComesFromAnotherSite(message, sender.IsOverHttps)) return Refusal(403);
  // What is posted may have effects before it writes, such as a failed login that is counted.
  if (message.Method == "POST" && access == Access::kRead) throw WriteRefused();
  const PageWithSessions& answering = access == Access::kRead ? page.Reading : page.Writing;
  PageSession session(answering.Sessions, CookieValues(message.Headers.Find("Cookie"), kSessionCookie));
  const bool isKnown = session.IsKnown() || request.CookieSubKeys(kLoginCookie).size() > 0;
  const bool lacksSameSiteCookie = isKnown && !HasSameSiteCookie(message);
  if (couldChange && lacksSameSiteCookie) return Refusal(403);
  HttpResponse response(request, page.Path, parts_.Sealer, now, sender.IsOverHttps);
  PageServer server(links_, page.Path);
  auto failure = RunPage(page.Path, answering.Answer, {&request, &response, &session, &server}, session);
  ReplyMessage reply = failure ? *std::move(failure) : response.Finish();
  const BrowserCookie cookie{kSessionCookie, "1", page.Path, {}, sender.IsOverHttps, CrossSite::kLinks};
  if (session.NewIdentifier()) AddSessionCookies(reply, *session.NewIdentifier(), cookie);
  // For a browser that has been logged in since before there was this cookie.
  if (lacksSameSiteCookie && !SetsSameSiteCookie(reply)) AddCookie(reply, SameSiteCookieBeside(cookie));
  return reply;
}

std::optional<ReplyMessage> Website::RunPage(const std::string& path, const Page& page,
                                             const ScriptingContext& context, PageSession& session) const {
  try {
    page(context);
    SaveSession(path, session);
    return std::nullopt;
  } catch (...) {
    return ReplyToFailure(path);
  }
}

ReplyMessage Website::ReplyToFailure(const std::string& path) const {
  try {
    throw;
  } catch (const WriteRefused&) {
    throw;
  } catch (const DatabaseUnavailable& error) {
    parts_.Log.error("{}: {}", path, OneLine(error.what()));
    return BusyRefusal(503);
  } catch (const std::exception& error) {
    parts_.Log.error("{}: {}", path, OneLine(error.what()));
  } catch (...) {
    parts_.Log.error("{}: unknown error", path);
  }
  return Refusal(500);
}

/// What the page has stored stays stored, so a view that is not remembered is no reason to tell the visitor
/// to try again; a login is.
void Website::SaveSession(const std::string& path, PageSession& session) const {
  try {
    session.Save();
  } catch (const DatabaseError& error) {
    if (session.ChangesLogin()) throw;
    parts_.Log.error("{}: a session was not saved: {}", path, OneLine(error.what()));
  }
}

const HostedPage* Website::FindCalDavPage() const {
  const auto found = std::ranges::find_if(parts_.Pages, [](const HostedPage& page) {
    return std::ranges::find(page.Branches, kCalDavPrefix, &PageBranch::Prefix) != page.Branches.end();
  });
  return found == parts_.Pages.end() ? nullptr : &*found;
}

ReplyMessage Website::AnswerOther(const RequestMessage& request) const {
  if (const HostedPage* page = LooksForCalDav(request) ? FindCalDavPage() : nullptr)
    return MovedTo(page->Path + std::string(kCalDavPrefix));
  if (!IsReading(request)) return MethodNotAllowed("GET, HEAD");
  if (request.Path == "/") return RedirectTo(parts_.Pages.front().Path);
  if (request.Path != "/healthz") return parts_.Files.Answer(request);
  if (!parts_.IsHealthy()) return Refusal(503);
  return {200, {{"Content-Type", "text/plain"}, {"Cache-Control", "no-store"}}, std::string("ok")};
}

}  // namespace orlune
