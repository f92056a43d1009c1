#pragma once

#include <string>
#include <string_view>

#include "platform/database.h"
#include "platform/page_host.h"
#include "platform/surroundings.h"
#include "request/page_context.h"
#include "request/session_values.h"

namespace orlune {

/// What a page handles a request with. Owns nothing but the alerts.
struct Visit {
  const PageContext& Context;
  Connection& Database;
  const orlune::Request& Request;
  orlune::Response& Response;
  SessionValues& Session;
  const orlune::Clock& Clock;
  orlune::Passwords& Passwords;
  LoginGuard& Logins;
  const CalendarText* CalendarTexts = nullptr;  ///< null, as `Secrets`, without `Sharing`
  orlune::Secrets* Secrets = nullptr;
  std::string Alerts{};  ///< error texts, shown in one alert box
};

}  // namespace orlune
