#include "pages/calendar/selection_row.h"

#include "base/dates.h"
#include "html/calendar_options.h"
#include "html/form_parts.h"
#include "html/option_label.h"
#include "request/component_state.h"
#include "request/texts.h"
#include "store/database_access.h"
#include "store/field.h"

namespace orlune {
namespace {

Html DateInput(const ComponentState& state) {
  return Html("{}&nbsp;<INPUT TYPE=TEXT NAME=\"cd\" VALUE=\"{}\" SIZE={}>&nbsp;&nbsp;&nbsp;",
              Content(LoadText(state, 201)),
              Attribute(FormatShortDate(state.Surroundings->Regional, state.CurrentDate)),
              InputSize(state, 18, 38));
}

Statement GroupViewsQuery(const ComponentState& state) {
  return Statement(
      "SELECT Name, FriendlyName, Calendars FROM GroupViews "
      "WHERE (Owner = '{}' OR Owner = 'admin') ORDER BY FriendlyName",
      state.LoginName);
}

Statement CalendarsQuery(const ComponentState& state) {
  return Statement(
      "SELECT Name, FriendlyName, IsGroup FROM Calendars "
      "WHERE (IsHidden = no OR Name = '{}') ORDER BY IsGroup, FriendlyName",
      state.LoginName);
}

void AddGroupViewOptions(Html& list, const ComponentState& state) {
  const auto rows = OpenQuery(*state.Database, GroupViewsQuery(state));
  const int name = rows->Column("Name");
  const int friendlyName = rows->Column("FriendlyName");
  while (rows->Next()) {
    const std::string calName = "@" + std::string(TextOf(rows->Get(name)));
    list.Add("<OPTION VALUE=\"{}\"{}>-{}-", Attribute(calName), SelectedWhen(calName == state.CalName),
             OptionLabel(TextOf(rows->Get(friendlyName))));
  }
}

void AddCalendarOptions(Html& list, const ComponentState& state) {
  const auto rows = OpenQuery(*state.Database, CalendarsQuery(state));
  AddCalendarOptions(list, *rows, [&](std::string_view name) { return name == state.CalName; });
}

Html ViewOption(const ComponentState& state, Markup value, int label) {
  return Html("<OPTION VALUE=\"{}\"{}>{}", value, SelectedWhen(value.Text() == state.DisplayMode),
              Content(LoadText(state, label)));
}

Html ViewList(const ComponentState& state) {
  return Html("{}&nbsp;<SELECT NAME=\"dm\">{}{}{}</SELECT>", Content(LoadText(state, 203)),
              ViewOption(state, "day", 204), ViewOption(state, "week", 205), ViewOption(state, "month", 206));
}

Html OkButton(const ComponentState& state) {
  return Html(
      "<INPUT TYPE=button VALUE=\"{}\" "
      "onClick=\"javascript:f=document.acForm;f.action='{}?'"
      "+f.cd.value+f.dm.options[f.dm.selectedIndex].value"
      "+f.cn.options[f.cn.selectedIndex].value;f.submit();\">",
      Attribute(LoadText(state, 207)), ScriptAttribute(state.ScriptName));
}

}  // namespace

void AnnounceSelectionRow(const ComponentState& state) {
  state.Database->Announce(GroupViewsQuery(state));
  state.Database->Announce(CalendarsQuery(state));
}

Html SelectionRow(const ComponentState& state, int columnCount) {
  Html row("<TR><TD ALIGN=CENTER COLSPAN={} CLASS=\"captions\">{}", columnCount, DateInput(state));
  row.Add("{}&nbsp;<SELECT NAME=\"cn\">", Content(LoadText(state, 202)));
  AddGroupViewOptions(row, state);
  AddCalendarOptions(row, state);
  row.Add("</SELECT>&nbsp;&nbsp;&nbsp;{}&nbsp;&nbsp;&nbsp;{}</TD></TR>", ViewList(state), OkButton(state));
  return row;
}

}  // namespace orlune
