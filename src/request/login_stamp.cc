#include "request/login_stamp.h"

#include "request/visit.h"

namespace orlune {
namespace {

constexpr std::string_view kKey = "Account";

std::string StampOf(const Passwords& passwords, const Account& account) {
  return std::to_string(account.Id) + '-' + passwords.Stamp(account.Password.value_or(""));
}

}  // namespace

void StampLogin(SessionValues& session, const Passwords& passwords, const Account& account) {
  session.Set(kKey, StampOf(passwords, account));
}

bool IsLoginOf(const SessionValues& session, const Passwords& passwords, const Account& account) {
  return session.Get(kKey) == StampOf(passwords, account);
}

void KeepOwnLogin(Visit& visit) {
  const auto account = Ask(visit.Database, AccountOf(visit.Context.Visitor.LoginName));
  if (account) StampLogin(visit.Session, visit.Passwords, *account);
}

}  // namespace orlune
