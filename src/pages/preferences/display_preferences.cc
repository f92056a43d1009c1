#include "pages/preferences/display_preferences.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/dates.h"
#include "base/lists.h"
#include "base/text.h"
#include "request/visitor.h"
#include "store/calendars.h"
#include "store/style_sheets.h"

namespace orlune {
namespace {

using std::chrono::hours;

DisplayPreferences InEffect(const Visitor& visitor) {
  DisplayPreferences preferences;
  preferences.FirstDayOfWeek = std::to_string(visitor.FirstDayOfWeek);
  preferences.Weekend = visitor.Weekend;
  preferences.ClockMode = visitor.TimeFormat.ends_with("AM/PM") ? "12" : "24";
  preferences.DayBegin = hours{visitor.DayBegin};
  preferences.DayEnd = hours{visitor.DayEnd};
  return preferences;
}

void SetIfStored(std::optional<int> stored, std::string& preference) {
  if (stored) preference = std::to_string(*stored);
}

void SetIfStored(std::optional<std::string>& stored, std::string& preference) {
  if (stored) preference = std::move(*stored);
}

void SetIfStored(std::optional<int> storedHour, std::optional<TimeOfDay>& preference) {
  if (storedHour && *storedHour >= 0 && *storedHour < 24) preference = hours{*storedHour};
}

/// Whether `text` is a text list of weekday numbers in ascending order, as posted by the form.
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
  const std::vector<int> ids = Ask(database, StyleSheetIds());
  return std::any_of(ids.begin(), ids.end(), [&](int id) { return std::to_string(id) == sheetId; });
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

DisplayPreferences LoadDisplayPreferences(Connection& database, const Visitor& visitor) {
  DisplayPreferences preferences = InEffect(visitor);
  auto stored = Ask(database, PreferencesOf(visitor.LoginName));
  if (!stored) return preferences;
  SetIfStored(stored->FirstDayOfWeek, preferences.FirstDayOfWeek);
  SetIfStored(stored->Weekend, preferences.Weekend);
  SetIfStored(stored->ClockMode, preferences.ClockMode);
  SetIfStored(stored->DayBegin, preferences.DayBegin);
  SetIfStored(stored->DayEnd, preferences.DayEnd);
  SetIfStored(stored->StartMode, preferences.StartMode);
  SetIfStored(stored->StyleSheet, preferences.StyleSheet);
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

void StoreDisplayPreferences(Connection& database, const Visitor& visitor,
                             const DisplayPreferences& preferences) {
  if (!AreChoicesOfTheForm(database, preferences)) return;
  StorePreferences(database, visitor.LoginName,
                   {WholeNumber(preferences.FirstDayOfWeek), preferences.Weekend,
                    WholeNumber(preferences.ClockMode), HourOf(preferences.DayBegin),
                    HourOf(preferences.DayEnd), preferences.StartMode, WholeNumber(preferences.StyleSheet)});
}

}  // namespace orlune
