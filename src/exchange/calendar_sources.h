#pragma once

#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/week.h"
#include "exchange/participant.h"
#include "platform/database.h"
#include "store/calendars.h"

namespace orlune {

/// The calendars whose events a calendar shows: itself; of a group view the members and the groups that they
/// belong to, as on its page. Throws DatabaseError.
std::vector<std::string> SourcesOf(Connection& database, const SharedCalendar& calendar);

/// The weekends of some calendars.
class Weekends {
 public:
  explicit Weekends(std::span<const CalendarWeekend> weekends);

  /// Of a calendar that is not among them, the usual one.
  Week WeekOf(std::string_view calendar) const;

 private:
  std::unordered_map<std::string, std::string> byCalendar_;  ///< by the name in lower case
};

}  // namespace orlune
