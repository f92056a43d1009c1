#pragma once

#include <vector>

#include "app/configuration.h"
#include "app/regions.h"
#include "caldav/recent_logins.h"
#include "exchange/calendar_text.h"
#include "http/page_branch.h"
#include "platform/clock.h"
#include "platform/localiser.h"
#include "platform/login_guard.h"
#include "platform/passwords.h"
#include "platform/secrets.h"

namespace orlune {

/// What the exchange of events works with, on whichever page. Outlives the branches.
struct ExchangeSurroundings {
  const CalendarText& Texts;
  orlune::Secrets& Secrets;
  orlune::Passwords& Passwords;
  LoginGuard& Logins;
  RecentLogins& Recent;
  const orlune::Clock& Clock;
  LocaliserFactory& Localisers;
};

/// The addresses below a sharing page where programs exchange events: CalDAV and feeds.
std::vector<PageBranch> MakeBranches(const PageConfiguration& page, const PagePlace& place,
                                     const ExchangeSurroundings& surroundings);

}  // namespace orlune
