#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "platform/page_host.h"

namespace orlune::testing {

/// The response of one page.
struct Answer {
  std::string Body;
  std::string RedirectedTo;
  std::string ContentType;
  std::string DownloadedAs;
  std::string Language;
  unsigned Status = 200;
  std::chrono::seconds RetryAfter{0};
  bool IsUncached = false;
};

/// A fake web server for one browser: keeps the session and the cookie between requests, and records the
/// response. Parameters and fields are decoded.
class FakeHost : public Request, public Response, public Session, public Server {
 public:
  using Fields = std::map<std::string, std::string, std::less<>>;

  /// Starts a request and discards the last response.
  void StartRequest(Fields query, Fields form, std::string queryString);
  ScriptingContext Context() { return {this, this, this, this}; }
  const Answer& LastAnswer() const { return answer_; }

  Fields SessionValues;
  Fields Cookie;  ///< the sub-keys of "OLOR" that the browser sends
  bool IsCookieDropped = false;
  std::string CookiePath;
  std::string UserAgent = "Test";
  std::string PathInfo;
  bool IsOverHttps = true;
  std::filesystem::path SiteFolder;

  std::string_view QueryParameter(std::string_view name) const override { return Find(query_, name); }
  std::string_view QueryString() const override { return queryString_; }
  std::string_view FormField(std::string_view name) const override { return Find(form_, name); }
  std::size_t FormFieldCount() const override { return form_.size(); }
  std::string_view CookieValue(std::string_view cookie, std::string_view key) const override;
  std::string_view ServerVariable(std::string_view name) const override;

  void SetStatus(unsigned status) override { answer_.Status = status; }
  void SetRetryAfter(std::chrono::seconds delay) override { answer_.RetryAfter = delay; }
  void SetContentType(std::string_view type) override { answer_.ContentType = type; }
  void SetDownload(std::string_view fileName) override { answer_.DownloadedAs = fileName; }
  void SetLanguage(std::string_view tag) override { answer_.Language = tag; }
  void SetExpires(std::chrono::minutes lifetime) override { answer_.IsUncached = lifetime.count() == 0; }
  void Write(std::string text) override { answer_.Body += text; }
  void Redirect(std::string_view url) override { answer_.RedirectedTo = url; }
  void SetCookieValue(std::string_view cookie, std::string_view key, std::string_view value) override;
  void ClearCookie(std::string_view cookie) override;
  void SetCookiePath(std::string_view cookie, std::string_view path) override;
  void SetCookieExpires(std::string_view cookie, Date day) override;

  std::string Get(std::string_view key) const override { return std::string(Find(SessionValues, key)); }
  void Set(std::string_view key, std::string_view value) override { SessionValues[std::string(key)] = value; }
  bool Serves(std::string_view link) const override { return std::filesystem::exists(SiteFolder / link); }

 private:
  static std::string_view Find(const Fields& fields, std::string_view name);

  Fields query_;
  Fields form_;
  std::string queryString_;
  Fields receivedCookie_;
  Answer answer_;
};

}  // namespace orlune::testing
