#pragma once

#include <memory>
#include <string>

#include "base/regional_settings.h"
#include "exchange/calendar_text.h"
#include "http/page_branch.h"
#include "platform/clock.h"
#include "platform/database.h"
#include "platform/localiser.h"
#include "platform/login_guard.h"
#include "platform/secrets.h"

namespace orlune {

/// What feeds are made of; outlives them.
struct FeedParts {
  DatabaseDriver& Databases;
  std::string Database;  ///< the address to be displayed
  const CalendarText& Texts;
  orlune::Secrets& Secrets;
  LoginGuard& Logins;
  const orlune::Clock& Clock;
  const RegionalSettings& Regional;
  std::shared_ptr<const orlune::Localiser> Localiser;  ///< null for English
};

/// Answers GET and HEAD of "<secret>.ics" with the calendar or group view of a secret link as iCalendar text:
/// what its maker may see at that time. Nothing is read of the events while they are as the client has them.
/// Throws DatabaseError, and WriteRefused for the first use of a link on a day.
class FeedService {
 public:
  explicit FeedService(FeedParts parts) : parts_(std::move(parts)) {}

  ReplyMessage Answer(const BranchRequest& request) const;

 private:
  ReplyMessage AnswerWrongSecret(std::string_view secret, const BranchRequest& request) const;

  FeedParts parts_;
};

}  // namespace orlune
