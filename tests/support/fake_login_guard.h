#pragma once

#include <string>

#include "platform/login_guard.h"

namespace orlune::testing {

/// Admits everybody unless told otherwise, and records what happened as "anna admitted, anna failed".
class FakeLoginGuard : public LoginGuard {
 public:
  std::chrono::seconds Pause{0};
  std::string Record;

  std::chrono::seconds Admit(const LoginAttempt& attempt) override {
    Note(attempt, Pause.count() == 0 ? "admitted" : "held off");
    return Pause;
  }
  void Failed(const LoginAttempt& attempt) override { Note(attempt, "failed"); }
  void Succeeded(const LoginAttempt& attempt) override { Note(attempt, "succeeded"); }

 private:
  void Note(const LoginAttempt& attempt, const char* what) {
    if (!Record.empty()) Record += ", ";
    Record.append(attempt.Name).append(" ").append(what);
  }
};

}  // namespace orlune::testing
