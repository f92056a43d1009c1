#include "caldav/caldav_login.h"

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
  LoginCheck(const LoginParts& parts, const ExchangeTools& tools, Connection& database, Access access,
             const BasicCredentials& credentials)
      : parts_(parts),
        tools_(tools),
        database_(database),
        access_(access),
        credentials_(credentials),
        key_(parts.Secrets.Digest(parts.DatabaseAddress + '\0' + ToLower(credentials.Name) + '\0' +
                                  credentials.Password)),
        recentStamp_(parts.Recent.Find(key_)) {
    // Whoever is new waits for the check of a password, and perhaps for the note of its use.
    if (!recentStamp_ && access_ == Access::kRead) throw WriteRefused();
  }

  bool IsRight() {
    PrepareExchange(database_, parts_.Secrets);
    return HasAppPassword() || (parts_.AllowsLoginPassword && HasLoginPassword());
  }

 private:
  bool HasAppPassword() {
    const auto found = FindAppPassword(database_, parts_.Secrets, credentials_.Name, credentials_.Password);
    if (!found) return false;
    NoteUseOfAppPassword(database_, {parts_.Secrets, tools_.Regional, tools_.Today}, *found);
    parts_.Recent.Remember(key_, "");
    return true;
  }

  /// An account without a password is open to all on the pages, but not to programs.
  bool HasLoginPassword() {
    const auto login = Ask(database_, LoginAccountOf(credentials_.Name));
    const std::string stored = login ? login->Account.Password.value_or("") : "";
    if (stored.empty()) return false;
    const std::string stamp = parts_.Passwords.Stamp(stored);
    if (recentStamp_ == stamp) return true;
    if (access_ == Access::kRead) throw WriteRefused();
    if (!parts_.Passwords.AreEqual(stored, credentials_.Password)) return false;
    parts_.Recent.Remember(key_, stamp);
    return true;
  }

  const LoginParts& parts_;
  const ExchangeTools& tools_;
  Connection& database_;
  const Access access_;
  const BasicCredentials& credentials_;
  const std::string key_;
  const std::optional<std::string> recentStamp_;
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
  LoginCheck check(parts, tools, database, access, credentials);
  const std::string addressText = address.Text();
  const LoginAttempt attempt{parts.DatabaseAddress, credentials.Name, addressText};
  if (const auto pause = parts.Guard.Admit(attempt); pause.count() > 0) throw TooManyAttempts(pause);
  if (!check.IsRight()) {
    parts.Guard.Failed(attempt);
    throw Unauthorised();
  }
  parts.Guard.Succeeded(attempt);
}

}  // namespace orlune
