#include "http/http_request.h"

#include "base/url_encoding.h"
#include "base/utf8.h"
#include "http/cookies.h"

namespace orlune {

HttpRequest::HttpRequest(const RequestMessage& message, std::string_view pagePath, const CookieSealer& sealer,
                         Date today, const Sender& sender)
    : message_(message),
      pagePath_(pagePath),
      sealer_(sealer),
      today_(today),
      senderAddress_(sender.Address.Text()),
      queryString_(RepairUtf8(message.Query)),
      isOverHttps_(sender.IsOverHttps),
      host_(RepairUtf8(std::string(message.Headers.Find("Host")))),
      userAgent_(RepairUtf8(std::string(message.Headers.Find("User-Agent")))),
      acceptLanguage_(RepairUtf8(std::string(message.Headers.Find("Accept-Language")))),
      query_(DecodeQuery(message.Query)) {}

std::string_view HttpRequest::CookieValue(std::string_view cookie, std::string_view key) const {
  return CookieSubKeys(cookie).Find(key);
}

std::string_view HttpRequest::ServerVariable(std::string_view name) const {
  if (name == "HTTP_USER_AGENT") return userAgent_;
  if (name == "HTTP_ACCEPT_LANGUAGE") return acceptLanguage_;
  if (name == "HTTP_HOST") return host_;
  if (name == "HTTPS") return isOverHttps_ ? "on" : "";
  if (name == "SCRIPT_NAME") return pagePath_;
  if (name == "PATH_INFO") return std::string_view(message_.Path).substr(pagePath_.size());
  if (name == "REMOTE_ADDR") return senderAddress_;
  return {};
}

const NamedTexts& HttpRequest::CookieSubKeys(std::string_view cookie) const {
  const auto known = openedCookies_.find(cookie);
  if (known != openedCookies_.end()) return known->second;
  return openedCookies_.emplace(cookie, OpenCookie(cookie)).first->second;
}

NamedTexts HttpRequest::OpenCookie(std::string_view cookie) const {
  for (const std::string_view sealed : CookieValues(message_.Headers.Find("Cookie"), cookie)) {
    std::optional<CookieContents> contents = sealer_.Open(sealed, cookie, pagePath_, today_);
    if (contents) return std::move(contents->SubKeys);
  }
  return {};
}

}  // namespace orlune
