#include "pages/calendar/selection_row.h"

#include "base/dates.h"
#include "html/calendar_options.h"
#include "html/form_parts.h"
#include "html/option_label.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/database_access.h"
#include "store/field.h"

namespace orlune {
namespace {

Html DateInput(const Visit& visit) {
  return Html("{}&nbsp;<INPUT TYPE=TEXT NAME=\"cd\" VALUE=\"{}\" SIZE={}>&nbsp;&nbsp;&nbsp;",
              Content(LoadText(visit, Text::kViewedDate)),
              Attribute(FormatShortDate(visit.Context.Regional, visit.Context.Visitor.CurrentDate)),
              InputSize(visit, 18, 38));
}

Statement GroupViewsQuery(const Visit& visit) {
  return Statement(
      "SELECT Name, FriendlyName, Calendars FROM GroupViews "
      "WHERE (Owner = '{}' OR Owner = 'admin') ORDER BY FriendlyName",
      visit.Context.Visitor.LoginName);
}

Statement CalendarsQuery(const Visit& visit) {
  return Statement(
      "SELECT Name, FriendlyName, IsGroup FROM Calendars "
      "WHERE (IsHidden = no OR Name = '{}') ORDER BY IsGroup, FriendlyName",
      visit.Context.Visitor.LoginName);
}

void AddGroupViewOptions(Html& list, const Visit& visit) {
  const auto rows = OpenQuery(visit.Database, GroupViewsQuery(visit));
  const int name = rows->Column("Name");
  const int friendlyName = rows->Column("FriendlyName");
  while (rows->Next()) {
    const std::string calName = "@" + std::string(TextOf(rows->Get(name)));
    list.Add("<OPTION VALUE=\"{}\"{}>-{}-", Attribute(calName),
             SelectedWhen(calName == visit.Context.Visitor.CalName),
             OptionLabel(TextOf(rows->Get(friendlyName))));
  }
}

void AddCalendarOptions(Html& list, const Visit& visit) {
  const auto rows = OpenQuery(visit.Database, CalendarsQuery(visit));
  AddCalendarOptions(list, *rows,
                     [&](std::string_view name) { return name == visit.Context.Visitor.CalName; });
}

Html ViewOption(const Visit& visit, Markup value, Text label) {
  return Html("<OPTION VALUE=\"{}\"{}>{}", value,
              SelectedWhen(value.Text() == visit.Context.Visitor.DisplayMode),
              Content(LoadText(visit, label)));
}

Html ViewList(const Visit& visit) {
  return Html("{}&nbsp;<SELECT NAME=\"dm\">{}{}{}</SELECT>", Content(LoadText(visit, Text::kViewMode)),
              ViewOption(visit, "day", Text::kDayMode), ViewOption(visit, "week", Text::kWeekMode),
              ViewOption(visit, "month", Text::kMonthMode));
}

Html OkButton(const Visit& visit) {
  return Html(
      "<INPUT TYPE=button VALUE=\"{}\" "
      "onClick=\"javascript:f=document.acForm;f.action='{}?'"
      "+f.cd.value+f.dm.options[f.dm.selectedIndex].value"
      "+f.cn.options[f.cn.selectedIndex].value;f.submit();\">",
      Attribute(LoadText(visit, Text::kViewButton)), ScriptAttribute(visit.Context.Hosting.ScriptName));
}

}  // namespace

void AnnounceSelectionRow(const Visit& visit) {
  visit.Database.Announce(GroupViewsQuery(visit));
  visit.Database.Announce(CalendarsQuery(visit));
}

Html SelectionRow(const Visit& visit, int columnCount) {
  Html row("<TR><TD ALIGN=CENTER COLSPAN={} CLASS=\"captions\">{}", columnCount, DateInput(visit));
  row.Add("{}&nbsp;<SELECT NAME=\"cn\">", Content(LoadText(visit, Text::kViewedCalendar)));
  AddGroupViewOptions(row, visit);
  AddCalendarOptions(row, visit);
  row.Add("</SELECT>&nbsp;&nbsp;&nbsp;{}&nbsp;&nbsp;&nbsp;{}</TD></TR>", ViewList(visit), OkButton(visit));
  return row;
}

}  // namespace orlune
