#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"

namespace orlune {

/// The members of a group view with their colours, position for position; a colour may be empty or missing.
struct GroupData {
  std::vector<std::string> Calendars;
  std::vector<std::string> BackGround;
  std::vector<std::string> ForeGround;

  /// The colours of the member at `place`, which runs from 0; "" when it has none.
  std::string_view BackGroundAt(std::size_t place) const;
  std::string_view ForeGroundAt(std::size_t place) const;

  /// The colours of the first place of `calendar` among the members, names compared ignoring case; "" when it
  /// has none.
  std::string_view BackGroundOf(std::string_view calendar) const;
  std::string_view ForeGroundOf(std::string_view calendar) const;
};

/// The group view of the internal name `name`, without its "@"; without members when there is none.
GroupData GetGroupData(Connection& database, std::string_view name);

}  // namespace orlune
