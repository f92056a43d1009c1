#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "store/statement.h"

namespace orlune {

/// The query for the calendars of the group view that `calName` names.
Statement ViewedCalendarsQuery(std::string_view calName);

/// The names of the calendars that `calName` shows: those of the group view after a leading "@" (none when
/// there is no such view), otherwise the one itself.
std::vector<std::string> ViewedCalendars(Connection& database, std::string_view calName);

/// The same, each between apostrophes and joined with ", ", as an In (...) takes them; empty when there are
/// none.
Statement QuotedCalendarList(Connection& database, std::string_view calName);

/// Whether `calName` names a group view rather than a calendar.
inline bool IsGroupView(std::string_view calName) {
  return calName.starts_with('@');
}

}  // namespace orlune
