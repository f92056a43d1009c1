#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "caldav/caldav_login.h"
#include "caldav/dav_visit.h"
#include "http/page_branch.h"

namespace orlune {

/// Largest are the reports that name all events of a calendar.
inline constexpr std::size_t kMostCalDavBytes = std::size_t{4} << 20U;

/// What the service works with. Outlives it.
struct CalDavParts {
  DatabaseDriver& Databases;
  orlune::Access Access;                 ///< of the driver's connections
  std::function<ExchangeTools()> Tools;  ///< with today's date; thread-safe
  LoginParts Login;
};

/// The calendars of one hosting page for calendar programs and phones, by CalDAV (RFC 4791, with
/// synchronisation, RFC 6578), below "/dav/". Answers every method. Used by several threads at once.
class CalDavService {
 public:
  explicit CalDavService(CalDavParts parts) : parts_(std::move(parts)) {}

  /// Throws DatabaseError and, when the connections only read, WriteRefused for whatever writes or waits.
  ReplyMessage Answer(const BranchRequest& request) const;

 private:
  ReplyMessage AnswerClient(const BranchRequest& request) const;

  CalDavParts parts_;
};

}  // namespace orlune
