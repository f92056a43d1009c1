#include "support/fake_host.h"

namespace orlune::testing {

std::string_view FakeHost::Find(const Fields& fields, std::string_view name) {
  const auto field = fields.find(name);
  return field == fields.end() ? std::string_view() : std::string_view(field->second);
}

void FakeHost::StartRequest(Fields query, Fields form, std::string queryString) {
  query_ = std::move(query);
  form_ = std::move(form);
  queryString_ = std::move(queryString);
  receivedCookie_ = Cookie;
  answer_ = {};
}

std::string_view FakeHost::CookieValue(std::string_view cookie, std::string_view key) const {
  return cookie == "OLOR" ? Find(receivedCookie_, key) : std::string_view();
}

std::string_view FakeHost::ServerVariable(std::string_view name) const {
  if (name == "HTTP_USER_AGENT") return UserAgent;
  if (name == "PATH_INFO") return PathInfo;
  if (name == "HTTP_HOST") return "calendar.example";
  if (name == "HTTPS") return IsOverHttps ? "on" : "";
  return name == "SCRIPT_NAME" ? "/cal.asp" : "";
}

void FakeHost::SetCookieValue(std::string_view /*cookie*/, std::string_view key, std::string_view value) {
  Cookie[std::string(key)] = value;
}

void FakeHost::ClearCookie(std::string_view /*cookie*/) {
  Cookie.clear();
}

void FakeHost::SetCookiePath(std::string_view /*cookie*/, std::string_view path) {
  CookiePath = path;
}

void FakeHost::SetCookieExpires(std::string_view /*cookie*/, Date day) {
  IsCookieDropped = day <= Date{std::chrono::year{2004} / 3 / 15};
}

}  // namespace orlune::testing
