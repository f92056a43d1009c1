#pragma once

#include <string>

#include "caldav/recent_logins.h"
#include "exchange/exchange_tools.h"
#include "http/basic_credentials.h"
#include "http/http_message.h"
#include "http/trusted_proxies.h"
#include "platform/database.h"
#include "platform/login_guard.h"
#include "platform/passwords.h"
#include "platform/secrets.h"

namespace orlune {

/// What decides whether a client is let in. Outlives who uses it.
struct LoginParts {
  std::string DatabaseAddress;  ///< as the login form names it to the guard
  orlune::Secrets& Secrets;
  orlune::Passwords& Passwords;
  LoginGuard& Guard;
  RecentLogins& Recent;
  bool AllowsLoginPassword = false;  ///< beside app passwords
};

/// Whether credentials may come over the request's connection: by HTTPS, or within this machine.
bool IsSafeFromListeners(const Sender& sender);

/// Throws DavError (401) when there are none.
BasicCredentials CredentialsOf(const RequestMessage& message);

/// Returns when the credentials have an app password of the user or, where it is allowed, the login password.
/// With `Access::kRead` only credentials that were checked lately are recognised; throws WriteRefused for
/// others. Throws DavError (401, 429) and DatabaseError.
void CheckLogin(const LoginParts& parts, const ExchangeTools& tools, Connection& database, Access access,
                const BasicCredentials& credentials, const IpAddress& address);

}  // namespace orlune
