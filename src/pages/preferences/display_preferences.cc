#include "pages/preferences/display_preferences.h"

#include "base/dates.h"
#include "base/lists.h"
#include "request/visit.h"
#include "store/database_access.h"
#include "store/field.h"

namespace orlune {
namespace {

using std::chrono::hours;

DisplayPreferences InEffect(const Visit& visit) {
  DisplayPreferences preferences;
  preferences.FirstDayOfWeek = std::to_string(visit.Context.Visitor.FirstDayOfWeek);
  preferences.Weekend = visit.Context.Visitor.Weekend;
  preferences.ClockMode = visit.Context.Visitor.TimeFormat.ends_with("AM/PM") ? "12" : "24";
  preferences.DayBegin = hours{visit.Context.Visitor.DayBegin};
  preferences.DayEnd = hours{visit.Context.Visitor.DayEnd};
  return preferences;
}

void TakeText(const Value& value, std::string& preference) {
  if (!IsNull(value)) preference = TextOf(value);
}

void TakeNumber(const Value& value, std::string& preference) {
  if (const auto number = NumberOf(value)) preference = std::to_string(*number);
}

void TakeHour(const Value& value, std::optional<TimeOfDay>& preference) {
  const auto hour = NumberOf(value);
  if (hour && *hour >= 0 && *hour < 24) preference = hours{*hour};
}

/// Whether `text` lists weekday numbers, each once and in their order, as the form posts them.
bool IsWeekdayList(std::string_view text) {
  if (text.empty()) return true;
  bool isList = true;
  char previous = '0';
  ForEachItem(text, [&](std::string_view item) {
    isList = isList && item.size() == 1 && item.front() > previous && item.front() <= '7';
    previous = item.empty() ? previous : item.front();
  });
  return isList;
}

bool IsStartMode(std::string_view text) {
  return text == "day" || text == "week" || text == "month";
}

bool IsOneWeekday(std::string_view text) {
  return text.size() == 1 && IsWeekdayList(text);
}

bool IsColourScheme(Connection& database, std::string_view sheetId) {
  const auto rows = OpenQuery(database, Statement("SELECT SheetID FROM StyleSheets"));
  const int column = rows->Column("SheetID");
  while (rows->Next()) {
    if (std::to_string(NumberOf(rows->Get(column)).value_or(0)) == sheetId) return true;
  }
  return false;
}

bool AreChoicesOfTheForm(Connection& database, const DisplayPreferences& preferences) {
  return IsStartMode(preferences.StartMode) && IsOneWeekday(preferences.FirstDayOfWeek) &&
         IsWeekdayList(preferences.Weekend) &&
         (preferences.ClockMode == "12" || preferences.ClockMode == "24") &&
         IsColourScheme(database, preferences.StyleSheet);
}

int HourOf(const std::optional<TimeOfDay>& time) {
  return static_cast<int>(std::chrono::floor<hours>(time.value_or(TimeOfDay{})).count());
}

}  // namespace

DisplayPreferences LoadDisplayPreferences(const Visit& visit) {
  DisplayPreferences preferences = InEffect(visit);
  const auto row = OpenQuery(
      visit.Database,
      Statement("SELECT FirstDayOfWeek, Weekend, ClockMode, DayBegin, DayEnd, StartMode, StyleSheet "
                "FROM Calendars WHERE Name = '{}'",
                visit.Context.Visitor.LoginName));
  if (!row->Next()) return preferences;
  const auto field = [&](std::string_view column) { return row->Get(row->Column(column)); };
  TakeNumber(field("FirstDayOfWeek"), preferences.FirstDayOfWeek);
  TakeText(field("Weekend"), preferences.Weekend);
  TakeNumber(field("ClockMode"), preferences.ClockMode);
  TakeHour(field("DayBegin"), preferences.DayBegin);
  TakeHour(field("DayEnd"), preferences.DayEnd);
  TakeText(field("StartMode"), preferences.StartMode);
  TakeNumber(field("StyleSheet"), preferences.StyleSheet);
  return preferences;
}

DisplayPreferences PostedDisplayPreferences(const Request& request) {
  const auto field = [&](std::string_view name) { return std::string(request.FormField(name)); };
  return {field("mode"),
          field("firstday"),
          field("weekend"),
          field("clock"),
          ParseTime(request.FormField("daybegin")),
          ParseTime(request.FormField("dayend")),
          field("css")};
}

bool HasHoursToShow(const DisplayPreferences& preferences) {
  return preferences.DayBegin && preferences.DayEnd &&
         *preferences.DayEnd - *preferences.DayBegin >= std::chrono::minutes{1};
}

void StoreDisplayPreferences(Visit& visit, const DisplayPreferences& preferences) {
  if (!AreChoicesOfTheForm(visit.Database, preferences)) return;
  bool failed = false;
  ExecuteQuiet(visit.Database,
               Statement("UPDATE Calendars SET StartMode = '{}', ClockMode = {}, StyleSheet = {}, "
                         "DayBegin = {}, DayEnd = {}, FirstDayOfWeek = {}, Weekend = '{}' WHERE Name = '{}'",
                         preferences.StartMode, preferences.ClockMode, preferences.StyleSheet,
                         HourOf(preferences.DayBegin), HourOf(preferences.DayEnd), preferences.FirstDayOfWeek,
                         preferences.Weekend, visit.Context.Visitor.LoginName),
               failed);
}

}  // namespace orlune
