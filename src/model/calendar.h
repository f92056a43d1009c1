#pragma once

#include <string>
#include <string_view>

namespace orlune {

/// A user's or a group's calendar, as selection lists show it.
struct Calendar {
  std::string Name;
  std::string FriendlyName;
  bool IsGroup = false;
};

/// Whether `calName` names a group view rather than a calendar.
inline bool IsGroupView(std::string_view calName) {
  return calName.starts_with('@');
}

}  // namespace orlune
