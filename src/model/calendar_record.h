#pragma once

#include <string>

namespace orlune {

/// A user or a group as the administration edits it. The lists of groups are text lists; they and the
/// password are unused for a group.
struct CalendarRecord {
  std::string FriendlyName;
  std::string Name;
  std::string Password;
  std::string MemberOfGroups;
  std::string AdminOfGroups;
  bool IsHidden = false;
};

}  // namespace orlune
