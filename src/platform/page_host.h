#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

#include "base/civil_time.h"

namespace orlune {

/// What may follow a hosting page's own address and is answered by it, in the same session.
struct Companion {
  std::string_view Name;          ///< such as "/texts"
  bool TakesForms = false;        ///< else it only reads
  std::size_t MostFileBytes = 0;  ///< of the largest file in a posted form; 0: files are left out
};

/// What the browser sent, decoded: every text is valid UTF-8, but for files, and the values of a name that
/// was sent several times are joined with ", ". The views are valid as long as the request; what is absent is
/// "".
class Request {
 public:
  virtual ~Request() = default;

  virtual std::string_view QueryParameter(std::string_view name) const = 0;
  /// The whole query as it was sent, still encoded, without its "?".
  virtual std::string_view QueryString() const = 0;
  /// Of a posted file, its content as it is.
  virtual std::string_view FormField(std::string_view name) const = 0;
  /// How many different fields the posted form holds; 0 without a form.
  virtual std::size_t FormFieldCount() const = 0;
  /// The sub-key `key` of the cookie `cookie`.
  virtual std::string_view CookieValue(std::string_view cookie, std::string_view key) const = 0;
  /// "HTTP_USER_AGENT", "HTTP_ACCEPT_LANGUAGE", "HTTP_HOST", the server's name with its port, "HTTPS", "on"
  /// or
  /// "", "REMOTE_ADDR", the visitor's address, "SCRIPT_NAME", the hosting page's own path, or "PATH_INFO",
  /// what follows it in the address: "" or such as "/texts".
  virtual std::string_view ServerVariable(std::string_view name) const = 0;
};

/// The cookie that holds the session of a page with `UseCookie`.
inline constexpr std::string_view kLoginCookie = "OLOR";

/// The response to the browser. A redirect discards everything written.
class Response {
 public:
  virtual ~Response() = default;

  /// The HTTP status of the page, which is 200 when it is not set.
  virtual void SetStatus(unsigned status) = 0;
  /// When another try makes sense, for the statuses 429 and 503.
  virtual void SetRetryAfter(std::chrono::seconds delay) = 0;
  /// The media type of what is written, which is HTML when it is not set.
  virtual void SetContentType(std::string_view type) = 0;
  /// Offers what is written as a file of this name to be stored.
  virtual void SetDownload(std::string_view fileName) = 0;
  /// The language of the texts, as a tag such as "de" (BCP 47).
  virtual void SetLanguage(std::string_view tag) = 0;
  /// How long a cache may keep the page; 0 keeps it out of every cache.
  virtual void SetExpires(std::chrono::minutes lifetime) = 0;
  /// Appends to the page.
  virtual void Write(std::string text) = 0;
  virtual void Redirect(std::string_view url) = 0;

  /// Sets one sub-key of a cookie; its other sub-keys keep what the request carried.
  virtual void SetCookieValue(std::string_view cookie, std::string_view key, std::string_view value) = 0;
  /// Empties a cookie of all its sub-keys.
  virtual void ClearCookie(std::string_view cookie) = 0;
  virtual void SetCookiePath(std::string_view cookie, std::string_view path) = 0;
  /// The browser drops the cookie when `day` begins.
  virtual void SetCookieExpires(std::string_view cookie, Date day) = 0;
};

/// The values that the server keeps for one browser and hosting page. Requests of one session may run at
/// once.
class Session {
 public:
  virtual ~Session() = default;

  /// The value under `key`, or "".
  virtual std::string Get(std::string_view key) const = 0;
  virtual void Set(std::string_view key, std::string_view value) = 0;
};

/// The web server around the page.
class Server {
 public:
  virtual ~Server() = default;
  /// Whether the server serves a file for `link` on the hosting page; may miss a change of the last second.
  virtual bool Serves(std::string_view link) const = 0;
};

/// The four objects of one request. They must outlive its handling.
struct ScriptingContext {
  orlune::Request* Request;
  orlune::Response* Response;
  orlune::Session* Session;
  orlune::Server* Server;
};

}  // namespace orlune
