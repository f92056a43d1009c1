#pragma once

#include "base/regional_settings.h"
#include "platform/clock.h"
#include "platform/database.h"
#include "platform/localiser.h"
#include "platform/login_guard.h"
#include "platform/passwords.h"

namespace orlune {

/// What the component needs of the machine that it runs on. Shared by all requests; all parts outlive them.
struct Surroundings {
  const orlune::Clock& Clock;
  DatabaseDriver& Databases;
  const RegionalSettings& Regional;
  LocaliserFactory& Localisers;
  orlune::Passwords& Passwords;
  LoginGuard& Logins;
};

}  // namespace orlune
