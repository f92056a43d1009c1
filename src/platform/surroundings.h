#pragma once

#include "base/regional_settings.h"
#include "platform/clock.h"
#include "platform/database.h"
#include "platform/date_languages.h"
#include "platform/localiser.h"
#include "platform/login_guard.h"
#include "platform/passwords.h"

namespace orlune {

class CalendarText;
class Secrets;

/// The component's dependencies on its environment. Shared by all requests, which they must outlive.
struct Surroundings {
  const orlune::Clock& Clock;
  DatabaseDriver& Databases;
  const RegionalSettings& Regional;
  orlune::DateLanguages& DateLanguages;
  LocaliserFactory& Localisers;
  orlune::Passwords& Passwords;
  LoginGuard& Logins;
  // Both are null where no page has `Sharing`.
  const CalendarText* CalendarTexts = nullptr;
  orlune::Secrets* Secrets = nullptr;
};

}  // namespace orlune
