#include "pages/sharing/calendar_export.h"

#include <optional>
#include <string>
#include <string_view>

#include "base/dates.h"
#include "base/text.h"
#include "exchange/shared_objects.h"
#include "pages/sharing/tools_of_visit.h"
#include "request/texts.h"

namespace orlune {
namespace {

/// The date that is typed, or nothing when none is; an alert when it is not a date.
std::optional<Date> TypedDate(Visit& visit, std::string_view parameter, Text alert) {
  const std::string_view typed = TrimBlanks(visit.Request.QueryParameter(parameter));
  const auto date = ParseDate(visit.Context.Regional, typed);
  if (!typed.empty() && !date) AddAlert(visit, alert);
  return date;
}

std::string FileName(const SharedCalendar& calendar) {
  return calendar.Name.substr(calendar.IsGroupView() ? 1 : 0) + ".ics";
}

}  // namespace

bool ExportCalendar(Visit& visit, const SharedCalendar& calendar) {
  ObjectChoice choice;
  choice.First = TypedDate(visit, "date1", Text::kInvalidStartDate);
  choice.Last = TypedDate(visit, "date2", Text::kInvalidEndDate);
  if (choice.First && choice.Last && *choice.First > *choice.Last) AddAlert(visit, Text::kEndBeforeStart);
  if (!visit.Alerts.empty()) return false;
  const auto objects = LoadObjects(visit.Database, ExchangeToolsOf(visit), calendar, choice);
  visit.Response.SetContentType("text/calendar; charset=utf-8");
  visit.Response.SetDownload(FileName(calendar));
  visit.Response.Write(visit.CalendarTexts->FileBegin(calendar.FriendlyName));
  for (const SharedObject& object : objects)
    visit.Response.Write(visit.CalendarTexts->FileEntry(object.Object, object.Week));
  visit.Response.Write(visit.CalendarTexts->FileEnd());
  return true;
}

}  // namespace orlune
