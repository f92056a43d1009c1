#include "events/group_data.h"

#include <algorithm>

#include "data/database_access.h"
#include "data/field.h"
#include "frame/lists.h"
#include "frame/text.h"

namespace orlune {
namespace {

std::string_view ColourOf(std::string_view calendar, const std::vector<std::string>& calendars,
                          const std::vector<std::string>& colours) {
  const auto member = std::find_if(calendars.begin(), calendars.end(), [&](const std::string& name) {
    return EqualIgnoringCase(name, calendar);
  });
  const auto place = static_cast<std::size_t>(member - calendars.begin());
  return place < calendars.size() && place < colours.size() ? std::string_view(colours[place])
                                                            : std::string_view();
}

}  // namespace

std::string_view GroupData::BackGroundOf(std::string_view calendar) const {
  return ColourOf(calendar, Calendars, BackGround);
}

std::string_view GroupData::ForeGroundOf(std::string_view calendar) const {
  return ColourOf(calendar, Calendars, ForeGround);
}

GroupData GetGroupData(Connection& database, std::string_view name) {
  const auto row = OpenQuery(
      database,
      Statement("SELECT Calendars, Background, Foreground FROM GroupViews WHERE Name = '{}'", name));
  if (!row->Next()) return {};
  const auto list = [&](std::string_view column) { return SplitList(TextOf(row->Get(row->Column(column)))); };
  return {list("Calendars"), list("Background"), list("Foreground")};
}

}  // namespace orlune
