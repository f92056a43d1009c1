#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "http/cookies.h"
#include "http/http_message.h"
#include "http/http_request.h"
#include "platform/page_host.h"
#include "sessions/cookie_sealer.h"

namespace orlune {

/// Collects what a hosting page answers. Used by one thread.
class HttpResponse : public Response {
 public:
  /// The arguments outlive the response. `isSecure` restricts cookies to HTTPS.
  HttpResponse(const HttpRequest& request, std::string_view pagePath, const CookieSealer& sealer,
               DateTime now, bool isSecure);

  void SetStatus(unsigned status) override { status_ = status; }
  void SetRetryAfter(std::chrono::seconds delay) override { retryAfter_ = delay; }
  void SetContentType(std::string_view type) override { contentType_ = type; }
  void SetDownload(std::string_view fileName) override { downloadName_ = fileName; }
  void SetLanguage(std::string_view tag) override { language_ = tag; }
  void SetExpires(std::chrono::minutes lifetime) override { lifetime_ = lifetime; }
  void Write(std::string text) override;
  void Redirect(std::string_view url) override { redirect_ = url; }
  void SetCookieValue(std::string_view cookie, std::string_view key, std::string_view value) override;
  void ClearCookie(std::string_view cookie) override;
  void SetCookiePath(std::string_view cookie, std::string_view path) override;
  void SetCookieExpires(std::string_view cookie, Date day) override;

  /// Moves the answer out.
  ReplyMessage Finish();

 private:
  struct Draft {
    CookieContents Contents;
    std::string Path;
    bool IsCleared = false;
  };

  ReplyMessage PageReply();
  Draft& DraftOf(std::string_view cookie);
  void AddCookies(ReplyMessage& reply) const;
  BrowserCookie Sealed(const std::string& name, const Draft& draft) const;

  const HttpRequest& request_;
  std::string_view pagePath_;
  const CookieSealer& sealer_;
  DateTime now_;
  bool isSecure_;
  unsigned status_ = 200;
  std::chrono::seconds retryAfter_{0};
  std::string contentType_ = "text/html; charset=utf-8";
  std::string downloadName_;
  std::string language_;
  std::chrono::minutes lifetime_{0};
  std::string page_;
  std::optional<std::string> redirect_;
  std::map<std::string, Draft, std::less<>> drafts_;
};

}  // namespace orlune
