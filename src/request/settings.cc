#include "request/settings.h"

#include <algorithm>
#include <filesystem>

#include "base/lists.h"
#include "request/component_state.h"
#include "store/calendar_list.h"
#include "store/database_access.h"
#include "store/field.h"

namespace orlune {
namespace {

void TakeNumber(const Value& value, int least, int most, int& setting) {
  const auto number = NumberOf(value);
  if (number && *number >= least && *number <= most) setting = *number;
}

void TakeText(const Value& value, std::string& setting) {
  if (!IsNull(value)) setting = TextOf(value);
}

Statement DisplaySettingsQuery(const ComponentState& state) {
  return Statement(
      "SELECT FirstDayOfWeek, Weekend, DayBegin, DayEnd, StartMode, ClockMode, SheetFile "
      "FROM Calendars INNER JOIN StyleSheets ON Calendars.StyleSheet = StyleSheets.SheetID "
      "WHERE Name = '{}'",
      state.LoginName.empty() ? std::string_view("admin") : std::string_view(state.LoginName));
}

Statement MembershipsQuery(const Statement& calendars) {
  return Statement("SELECT DISTINCT MemberOfGroups FROM Calendars WHERE Name IN ({})", calendars);
}

Statement AdminshipsQuery(const ComponentState& state) {
  return Statement("SELECT AdminOfGroups FROM Calendars WHERE Name = '{}'", state.LoginName);
}

Statement EventTypesQuery() {
  return Statement("SELECT TypeName, FileName FROM EventTypes");
}

Statement AllGroupsQuery() {
  return Statement("SELECT Name FROM Calendars WHERE (IsGroup = yes)");
}

bool BelongsToAllGroups(const ComponentState& state) {
  return state.CalName == "admin" && state.LoginName == "admin";
}

void LoadDisplaySettings(ComponentState& state) {
  const auto row = OpenQuery(*state.Database, DisplaySettingsQuery(state));
  std::string startMode = "month";
  if (row->Next()) {
    const auto field = [&](std::string_view name) { return row->Get(row->Column(name)); };
    TakeNumber(field("FirstDayOfWeek"), 1, 7, state.FirstDayOfWeek);
    TakeText(field("Weekend"), state.Weekend);
    TakeNumber(field("DayBegin"), 0, 23, state.DayBegin);
    TakeNumber(field("DayEnd"), 0, 23, state.DayEnd);
    TakeText(field("SheetFile"), state.SheetFile);
    TakeText(field("StartMode"), startMode);
    if (NumberOf(field("ClockMode")) == 12) state.TimeFormat = "Hh:Nn AM/PM";
  }
  if (state.DisplayMode.empty()) state.DisplayMode = startMode;
}

void FallBackToDefaultSheet(ComponentState& state) {
  const auto file = state.Context.Server->MapPath(state.CssDir + state.SheetFile);
  std::error_code ignored;
  if (file.empty() || !std::filesystem::exists(file, ignored)) state.SheetFile = "default.css";
}

void AppendNew(std::vector<std::string>& list, std::string_view item) {
  if (!item.empty() && std::find(list.begin(), list.end(), item) == list.end()) list.emplace_back(item);
}

void LoadMemberships(ComponentState& state) {
  state.MemberOfGroups.clear();
  if (BelongsToAllGroups(state)) return ListAllGroups(state, false);

  const Statement calendars = QuotedCalendarList(*state.Database, state.CalName);
  if (!calendars.IsEmpty()) {
    const auto rows = OpenQuery(*state.Database, MembershipsQuery(calendars));
    const int memberOfGroups = rows->Column("MemberOfGroups");
    while (rows->Next()) {
      ForEachItem(TextOf(rows->Get(memberOfGroups)),
                  [&](std::string_view group) { AppendNew(state.MemberOfGroups, group); });
    }
  }
  AppendNew(state.MemberOfGroups, "default");
}

/// False when the user has no account.
bool LoadAdminships(ComponentState& state) {
  state.AdminOfGroups.clear();
  if (state.LoginName == "admin") {
    ListAllGroups(state, true);
    return true;
  }
  const auto row = OpenQuery(*state.Database, AdminshipsQuery(state));
  if (!row->Next()) return false;
  ForEachItem(TextOf(row->Get(row->Column("AdminOfGroups"))),
              [&](std::string_view group) { AppendNew(state.AdminOfGroups, group); });
  return true;
}

void LoadEventTypes(ComponentState& state) {
  state.EventTypes.clear();
  const auto rows = OpenQuery(*state.Database, EventTypesQuery());
  const int typeName = rows->Column("TypeName");
  const int fileName = rows->Column("FileName");
  while (rows->Next()) {
    state.EventTypes.push_back(
        {std::string(TextOf(rows->Get(typeName))), std::string(TextOf(rows->Get(fileName)))});
  }
}

}  // namespace

void AnnounceSettings(const ComponentState& state) {
  Connection& database = *state.Database;
  database.Announce(DisplaySettingsQuery(state));
  if (BelongsToAllGroups(state)) {
    database.Announce(AllGroupsQuery());
  } else if (IsGroupView(state.CalName)) {
    database.Announce(ViewedCalendarsQuery(state.CalName));
  } else {
    database.Announce(MembershipsQuery(QuotedList({{state.CalName}})));
  }
  database.Announce(state.LoginName == "admin" ? AllGroupsQuery() : AdminshipsQuery(state));
  database.Announce(EventTypesQuery());
}

bool LoadSettings(ComponentState& state) {
  LoadDisplaySettings(state);
  FallBackToDefaultSheet(state);
  LoadMemberships(state);
  const bool hasAccount = LoadAdminships(state);
  LoadEventTypes(state);
  return hasAccount || state.LoginName.empty();
}

void ListAllGroups(ComponentState& state, bool intoAdminships) {
  std::vector<std::string>& groups = intoAdminships ? state.AdminOfGroups : state.MemberOfGroups;
  const auto rows = OpenQuery(*state.Database, AllGroupsQuery());
  const int name = rows->Column("Name");
  while (rows->Next()) groups.emplace_back(TextOf(rows->Get(name)));
}

}  // namespace orlune
