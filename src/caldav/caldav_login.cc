#include "caldav/caldav_login.h"

#include <mutex>

#include "base/ip_network.h"
#include "base/text.h"
#include "caldav/dav_error.h"
#include "exchange/access_keys.h"
#include "exchange/change_log.h"
#include "store/calendars.h"

namespace orlune {
namespace {

DavError Unauthorised() {
  DavError error(401, "Log in with your login name and an app password.");
  error.Headers.emplace_back("WWW-Authenticate", "Basic realm=\"Orlune\", charset=\"UTF-8\"");
  return error;
}

DavError TooManyAttempts(std::chrono::seconds pause) {
  const std::string seconds = std::to_string(pause.count());
  DavError error(429, "There were too many failed logins. Try again in " + seconds + " seconds.");
  error.Headers.emplace_back("Retry-After", seconds);
  return error;
}

/// One check of credentials.
class LoginCheck {
 public:
  LoginCheck(const LoginParts& parts, const ExchangeTools& tools, Connection& database,
             const BasicCredentials& credentials)
      : parts_(parts),
        tools_(tools),
        database_(database),
        credentials_(credentials),
        key_(parts.Secrets.Digest(parts.DatabaseAddress + '\0' + ToLower(credentials.Name) + '\0' +
                                  credentials.Password)) {}

  /// Whether they were right lately and still are.
  bool AreKnown() {
    const auto stamp = parts_.Recent.Find(key_);
    if (!stamp) return false;
    PrepareExchange(database_, parts_.Secrets);
    return stamp->empty() ? HasAppPassword() : *stamp == StampOfLogin();
  }

  std::unique_lock<std::mutex> Turn() { return parts_.Recent.TurnOf(key_); }

  /// Nobody guesses an app password, so that whoever has one is let in whatever others have tried.
  bool HasAppPassword() {
    PrepareExchange(database_, parts_.Secrets);
    const auto found = FindAppPassword(database_, parts_.Secrets, credentials_.Name, credentials_.Password);
    if (!found) return false;
    NoteUseOfAppPassword(database_, {parts_.Secrets, tools_.Regional, tools_.Today}, *found);
    parts_.Recent.Remember(key_, "");
    return true;
  }

  bool HasLoginPassword() {
    const std::string stored = StoredPassword();
    if (stored.empty() || !parts_.Passwords.AreEqual(stored, credentials_.Password)) return false;
    parts_.Recent.Remember(key_, parts_.Passwords.Stamp(stored));
    return true;
  }

 private:
  /// An account without a password is open to all on the pages, but not to programs.
  std::string StoredPassword() {
    if (!parts_.AllowsLoginPassword) return "";
    const auto login = Ask(database_, LoginAccountOf(credentials_.Name));
    return login ? login->Account.Password.value_or("") : "";
  }

  std::string StampOfLogin() {
    const std::string stored = StoredPassword();
    return stored.empty() ? "" : parts_.Passwords.Stamp(stored);
  }

  const LoginParts& parts_;
  const ExchangeTools& tools_;
  Connection& database_;
  const BasicCredentials& credentials_;
  const std::string key_;
};

}  // namespace

bool IsSafeFromListeners(const Sender& sender) {
  static const std::optional<IpNetwork> kLoopback = IpNetwork::Parse("127.0.0.0/8");
  static const std::optional<IpAddress> kLoopbackV6 = IpAddress::Parse("::1");
  return sender.IsOverHttps || kLoopback->Contains(sender.Address) || sender.Address == kLoopbackV6;
}

BasicCredentials CredentialsOf(const RequestMessage& message) {
  auto credentials = ReadBasicCredentials(message.Headers.Find("Authorization"));
  if (!credentials) throw Unauthorised();
  return *std::move(credentials);
}

void CheckLogin(const LoginParts& parts, const ExchangeTools& tools, Connection& database, Access access,
                const BasicCredentials& credentials, const IpAddress& address) {
  LoginCheck check(parts, tools, database, credentials);
  if (check.AreKnown()) return;
  if (access == Access::kRead) throw WriteRefused();
  const auto turn = check.Turn();
  if (check.AreKnown() || check.HasAppPassword()) return;
  const std::string addressText = address.Text();
  const LoginAttempt attempt{parts.DatabaseAddress, credentials.Name, addressText};
  if (const auto pause = parts.Guard.Admit(attempt); pause.count() > 0) throw TooManyAttempts(pause);
  if (!check.HasLoginPassword()) {
    parts.Guard.Failed(attempt);
    throw Unauthorised();
  }
  parts.Guard.Succeeded(attempt);
}

}  // namespace orlune
