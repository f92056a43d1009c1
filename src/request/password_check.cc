#include "request/password_check.h"

#include "request/texts.h"
#include "request/visit.h"

namespace orlune {
namespace {

LoginAttempt AttemptAt(const Visit& visit, std::string_view name) {
  return {visit.Context.Hosting.DBPath, name, visit.Request.ServerVariable("REMOTE_ADDR")};
}

}  // namespace

bool AdmitAttempt(Visit& visit, std::string_view name) {
  const std::chrono::seconds pause = visit.Logins.Admit(AttemptAt(visit, name));
  if (pause <= std::chrono::seconds(0)) return true;
  visit.Response.SetStatus(429);
  visit.Response.SetRetryAfter(pause);
  AddAlert(visit, Text::kTooManyAttempts, {std::to_string(pause.count())});
  return false;
}

void EndAttempt(const Visit& visit, std::string_view name, bool isRight) {
  if (isRight) {
    visit.Logins.Succeeded(AttemptAt(visit, name));
  } else {
    visit.Logins.Failed(AttemptAt(visit, name));
  }
}

std::string PasswordToStore(const Visit& visit, std::string_view password) {
  return visit.Context.Hosting.Strict ? visit.Passwords.Hash(password) : std::string(password);
}

}  // namespace orlune
