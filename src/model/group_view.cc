#include "model/group_view.h"

#include <algorithm>

#include "base/text.h"

namespace orlune {
namespace {

std::string_view ItemAt(const std::vector<std::string>& items, std::size_t place) {
  return place < items.size() ? std::string_view(items[place]) : std::string_view();
}

}  // namespace

std::string_view GroupViewMembers::BackGroundAt(std::size_t place) const {
  return ItemAt(BackGround, place);
}

std::string_view GroupViewMembers::ForeGroundAt(std::size_t place) const {
  return ItemAt(ForeGround, place);
}

std::size_t GroupViewMembers::PlaceOf(std::string_view calendar) const {
  const auto member = std::find_if(Calendars.begin(), Calendars.end(), [&](const std::string& name) {
    return EqualIgnoringCase(name, calendar);
  });
  return member == Calendars.end() ? std::string::npos : static_cast<std::size_t>(member - Calendars.begin());
}

}  // namespace orlune
