#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/week.h"
#include "exchange/calendar_object.h"
#include "exchange/exchange_tools.h"
#include "exchange/participant.h"
#include "platform/database.h"

namespace orlune {

/// One object that a client may read, ready to be written as text: of other people's private events only the
/// time is left.
struct SharedObject {
  CalendarObject Object;
  orlune::Week Week;  ///< that its calendar is read with
  std::string ETag;   ///< without quotes; changes when and only when the text does
};

/// Which objects of a calendar.
struct ObjectChoice {
  std::optional<std::vector<std::string>> Names{};  ///< by the last segment of their addresses; nothing: all
  /// Only objects that may occur on these days of the server's zone.
  std::optional<Date> First{};
  std::optional<Date> Last{};
};

/// The objects of `calendar`, which is one of the participant's, in the order of their numbers. Throws
/// DatabaseError.
std::vector<SharedObject> LoadObjects(Connection& database, const ExchangeTools& tools,
                                      const SharedCalendar& calendar, const ObjectChoice& choice = {});

/// The spans of time that the object's events take and that touch the period: what a time-range filter looks
/// for (RFC 4791, section 9.9) and what is busy. At most the first `most` of each of its rows.
std::vector<BusyPeriod> SpansIn(const SharedObject& object, const CalendarText& texts,
                                const UtcPeriod& period, std::size_t most = kMostDaysOfObject);

/// Whose state a change builds on.
struct WriteCondition {
  std::optional<std::string> IfMatch{};  ///< the header as it was sent: "*" or a list of quoted ETags
  std::optional<std::string> IfNoneMatch{};
};

enum class WriteResult {
  kCreated,
  kChanged,
  kDeleted,
  kNotFound,
  kConditionFailed,  ///< 412
  kForbidden,        ///< the calendar is only read, or the object not seen in full
  kUidConflict,      ///< no-uid-conflict
};

struct WriteOutcome {
  WriteResult Result;
  std::string ETag{};             ///< of the stored object; it reads as it was sent
  std::string ConflictingName{};  ///< the object that has the UID
};

/// Stores what a client sent at `name` in one transaction; `planned` has been read with the calendar's week.
/// What the client has left as it was stays in the rows, also where text cannot say it. Throws DatabaseError.
WriteOutcome PutObject(Connection& database, const ExchangeTools& tools, const SharedCalendar& calendar,
                       const std::string& name, const PlannedObject& planned,
                       const WriteCondition& condition);
WriteOutcome DeleteObject(Connection& database, const ExchangeTools& tools, const SharedCalendar& calendar,
                          const std::string& name, const WriteCondition& condition);

/// What tells whether a feed or file of the calendar has changed, without reading its events: a text for an
/// ETag.
std::string FileETag(Connection& database, const ExchangeTools& tools, const Participant& participant,
                     const SharedCalendar& calendar);

/// The week that the events of a calendar go by, which its text is read with.
Week WeekOf(Connection& database, const SharedCalendar& calendar);
std::vector<std::string> KnownEventTypes(Connection& database);

}  // namespace orlune
