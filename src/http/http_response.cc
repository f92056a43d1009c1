#include "http/http_response.h"

#include "base/url_encoding.h"
#include "http/http_date.h"

namespace orlune {
namespace {

/// A file to be stored (RFC 6266): its name, and for old browsers one of plain characters (appendix D).
std::string Disposition(std::string_view fileName) {
  std::string plain(fileName);
  for (char& c : plain) {
    const bool isPlain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
                         c == '.' || c == '-' || c == '_';
    if (!isPlain) c = '_';
  }
  return "attachment; filename=\"" + plain + "\"; filename*=UTF-8''" + EncodePercent(fileName);
}

}  // namespace

HttpResponse::HttpResponse(const HttpRequest& request, std::string_view pagePath, const CookieSealer& sealer,
                           DateTime now, bool isSecure)
    : request_(request), pagePath_(pagePath), sealer_(sealer), now_(now), isSecure_(isSecure) {}

void HttpResponse::Write(std::string text) {
  if (page_.empty()) {
    page_ = std::move(text);
  } else {
    page_ += text;
  }
}

void HttpResponse::SetCookieValue(std::string_view cookie, std::string_view key, std::string_view value) {
  DraftOf(cookie).Contents.SubKeys.Set(key, value);
}

void HttpResponse::ClearCookie(std::string_view cookie) {
  Draft& draft = DraftOf(cookie);
  draft.Contents.SubKeys = {};
  draft.IsCleared = true;
}

void HttpResponse::SetCookiePath(std::string_view cookie, std::string_view path) {
  DraftOf(cookie).Path = EncodeUrl(path);
}

void HttpResponse::SetCookieExpires(std::string_view cookie, Date day) {
  DraftOf(cookie).Contents.Expires = day;
}

ReplyMessage HttpResponse::Finish() {
  ReplyMessage reply = redirect_ ? RedirectTo(*redirect_) : PageReply();
  if (retryAfter_.count() > 0) reply.Headers.emplace_back("Retry-After", std::to_string(retryAfter_.count()));
  AddCookies(reply);
  return reply;
}

ReplyMessage HttpResponse::PageReply() {
  ReplyMessage reply{status_, {{"Content-Type", contentType_}}, std::move(page_)};
  if (!language_.empty()) reply.Headers.emplace_back("Content-Language", language_);
  if (!downloadName_.empty()) reply.Headers.emplace_back("Content-Disposition", Disposition(downloadName_));
  if (lifetime_ > std::chrono::minutes(0)) {
    reply.Headers.emplace_back("Cache-Control",
                               "private, max-age=" + std::to_string(std::chrono::seconds(lifetime_).count()));
    if (!language_.empty()) reply.Headers.emplace_back("Vary", "Accept-Language");
  } else {
    reply.Headers.emplace_back("Cache-Control", "no-store");
    reply.Headers.emplace_back("Expires", FormatHttpDate({}));
  }
  return reply;
}

HttpResponse::Draft& HttpResponse::DraftOf(std::string_view cookie) {
  const auto known = drafts_.find(cookie);
  if (known != drafts_.end()) return known->second;
  Draft& draft = drafts_[std::string(cookie)];
  draft.Contents.SubKeys = request_.CookieSubKeys(cookie);
  draft.Path = pagePath_;
  return draft;
}

void HttpResponse::AddCookies(ReplyMessage& reply) const {
  for (const auto& [name, draft] : drafts_) {
    if (draft.Contents.SubKeys.size() == 0 && !draft.IsCleared) continue;
    const BrowserCookie cookie = Sealed(name, draft);
    reply.Headers.emplace_back("Set-Cookie", FormatSetCookie(cookie));
    if (name == kLoginCookie)
      reply.Headers.emplace_back("Set-Cookie", FormatSetCookie(SameSiteCookieBeside(cookie)));
  }
}

BrowserCookie HttpResponse::Sealed(const std::string& name, const Draft& draft) const {
  BrowserCookie cookie{name, {}, draft.Path, {}, isSecure_, CrossSite::kLinks};
  if (draft.Contents.Expires) cookie.Lifetime = *draft.Contents.Expires - now_.Day - now_.Time;
  if (draft.Contents.SubKeys.size() > 0) cookie.Value = sealer_.Seal(draft.Contents, name, pagePath_);
  return cookie;
}

}  // namespace orlune
