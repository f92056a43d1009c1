#pragma once

#include <map>
#include <string>
#include <string_view>

#include "http/http_message.h"
#include "http/trusted_proxies.h"
#include "platform/page_host.h"
#include "sessions/cookie_sealer.h"

namespace orlune {

/// What a hosting page sees of a request. Used by one thread.
class HttpRequest : public Request {
 public:
  /// The arguments outlive the request. Cookies that have expired on `today` read as absent.
  HttpRequest(const RequestMessage& message, std::string_view pagePath, const CookieSealer& sealer,
              Date today, const Sender& sender);

  std::string_view QueryParameter(std::string_view name) const override { return query_.Find(name); }
  std::string_view QueryString() const override { return queryString_; }
  std::string_view FormField(std::string_view name) const override { return message_.Form.Find(name); }
  std::size_t FormFieldCount() const override { return message_.Form.size(); }
  std::string_view CookieValue(std::string_view cookie, std::string_view key) const override;
  std::string_view ServerVariable(std::string_view name) const override;

  const NamedTexts& Query() const { return query_; }
  /// The sub-keys of a sealed cookie; none when the browser sent no valid one.
  const NamedTexts& CookieSubKeys(std::string_view cookie) const;

 private:
  NamedTexts OpenCookie(std::string_view cookie) const;

  const RequestMessage& message_;
  std::string_view pagePath_;
  const CookieSealer& sealer_;
  Date today_;
  std::string senderAddress_;
  std::string queryString_;
  bool isOverHttps_;
  std::string host_;
  std::string userAgent_;
  std::string acceptLanguage_;
  NamedTexts query_;
  mutable std::map<std::string, NamedTexts, std::less<>> openedCookies_;
};

}  // namespace orlune
