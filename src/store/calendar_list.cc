#include "store/calendar_list.h"

#include "base/lists.h"
#include "store/database_access.h"
#include "store/field.h"

namespace orlune {

Statement ViewedCalendarsQuery(std::string_view calName) {
  return Statement("SELECT Calendars FROM GroupViews WHERE Name = '{}'", calName.substr(1));
}

std::vector<std::string> ViewedCalendars(Connection& database, std::string_view calName) {
  if (!IsGroupView(calName)) return {std::string(calName)};
  const auto rows = OpenQuery(database, ViewedCalendarsQuery(calName));
  if (!rows->Next()) return {};
  return SplitList(TextOf(rows->Get(rows->Column("Calendars"))));
}

Statement QuotedCalendarList(Connection& database, std::string_view calName) {
  return QuotedList(ViewedCalendars(database, calName));
}

}  // namespace orlune
