#include "model/group_view.h"

#include <cstddef>

#include "base/text.h"

namespace orlune {
namespace {

std::string_view ItemAt(const std::vector<std::string>& items, std::size_t place) {
  return place < items.size() ? std::string_view(items[place]) : std::string_view();
}

void EraseAt(std::vector<std::string>& items, std::size_t place) {
  if (place < items.size()) items.erase(items.begin() + static_cast<std::ptrdiff_t>(place));
}

}  // namespace

std::string_view GroupViewMembers::BackGroundAt(std::size_t place) const {
  return ItemAt(BackGround, place);
}

std::string_view GroupViewMembers::ForeGroundAt(std::size_t place) const {
  return ItemAt(ForeGround, place);
}

bool GroupViewMembers::Remove(std::string_view calendar) {
  const std::size_t before = Calendars.size();
  for (std::size_t place = before; place-- > 0;) {
    if (!EqualIgnoringCase(Calendars[place], calendar)) continue;
    EraseAt(Calendars, place);
    EraseAt(BackGround, place);
    EraseAt(ForeGround, place);
  }
  return Calendars.size() != before;
}

MemberPlaces::MemberPlaces(const GroupViewMembers& members) {
  for (std::size_t place = 0; place < members.Calendars.size(); ++place)
    places_.emplace(ToLower(members.Calendars[place]), place);
}

std::size_t MemberPlaces::PlaceOf(std::string_view calendar) const {
  if (places_.empty()) return std::string::npos;
  const auto member = places_.find(ToLower(calendar));
  return member == places_.end() ? std::string::npos : member->second;
}

}  // namespace orlune
