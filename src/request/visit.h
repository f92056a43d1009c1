#pragma once

#include <string>
#include <string_view>

#include "platform/database.h"
#include "platform/page_host.h"
#include "platform/surroundings.h"
#include "request/page_context.h"
#include "request/session_values.h"

namespace orlune {

/// One request on its way to its answer. The context is ready; a page reads the request, asks the database,
/// and writes the response.
struct Visit {
  const PageContext& Context;
  Connection& Database;
  const orlune::Request& Request;
  orlune::Response& Response;
  SessionValues& Session;
  const orlune::Clock& Clock;
  orlune::Passwords& Passwords;
  LoginGuard& Logins;
  std::string Alerts{};  ///< errors that the page will show
};

}  // namespace orlune
