#include "exchange/calendar_sources.h"

#include <algorithm>

#include "base/lists.h"
#include "base/text.h"
#include "store/group_views.h"

namespace orlune {
namespace {

constexpr const char* kEverybodysGroup = "default";
constexpr int kSunday = 1;
constexpr std::string_view kUsualWeekend = "1, 7";

void AddNew(std::string_view name, std::vector<std::string>& names) {
  const auto isSame = [name](const std::string& known) { return EqualIgnoringCase(known, name); };
  if (!name.empty() && std::ranges::none_of(names, isSame)) names.emplace_back(name);
}

}  // namespace

std::vector<std::string> SourcesOf(Connection& database, const SharedCalendar& calendar) {
  if (!calendar.IsGroupView()) return {calendar.Name};
  std::vector<std::string> sources = Ask(database, MemberNamesOf(std::string_view(calendar.Name).substr(1)));
  for (const std::string& list : Ask(database, MembershipsOf(sources)))
    ForEachItem(list, [&](std::string_view group) { AddNew(group, sources); });
  AddNew(kEverybodysGroup, sources);
  return sources;
}

Weekends::Weekends(std::span<const CalendarWeekend> weekends) {
  for (const CalendarWeekend& weekend : weekends)
    byCalendar_.emplace(ToLower(weekend.Calendar), weekend.Weekend.value_or(std::string(kUsualWeekend)));
}

Week Weekends::WeekOf(std::string_view calendar) const {
  const auto found = byCalendar_.find(ToLower(calendar));
  return {kSunday, found == byCalendar_.end() ? kUsualWeekend : std::string_view(found->second)};
}

}  // namespace orlune
