#include "store/group_data.h"

#include <algorithm>

#include "base/lists.h"
#include "base/text.h"
#include "store/database_access.h"
#include "store/field.h"

namespace orlune {
namespace {

std::string_view ItemAt(const std::vector<std::string>& items, std::size_t place) {
  return place < items.size() ? std::string_view(items[place]) : std::string_view();
}

std::size_t PlaceOf(std::string_view calendar, const std::vector<std::string>& calendars) {
  const auto member = std::find_if(calendars.begin(), calendars.end(), [&](const std::string& name) {
    return EqualIgnoringCase(name, calendar);
  });
  return member == calendars.end() ? std::string::npos : static_cast<std::size_t>(member - calendars.begin());
}

}  // namespace

std::string_view GroupData::BackGroundAt(std::size_t place) const {
  return ItemAt(BackGround, place);
}

std::string_view GroupData::ForeGroundAt(std::size_t place) const {
  return ItemAt(ForeGround, place);
}

std::string_view GroupData::BackGroundOf(std::string_view calendar) const {
  return BackGroundAt(PlaceOf(calendar, Calendars));
}

std::string_view GroupData::ForeGroundOf(std::string_view calendar) const {
  return ForeGroundAt(PlaceOf(calendar, Calendars));
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
