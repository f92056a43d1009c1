#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orlune {

/// The members of a group view with their colours, position for position; a colour may be empty or missing.
struct GroupViewMembers {
  std::vector<std::string> Calendars;
  std::vector<std::string> BackGround;
  std::vector<std::string> ForeGround;

  /// The colours of the member at `place`, which runs from 0; "" when it has none.
  std::string_view BackGroundAt(std::size_t place) const;
  std::string_view ForeGroundAt(std::size_t place) const;

  /// The first place of `calendar` among the members, names compared ignoring case; `npos` of strings when it
  /// has none, since there may be more colours than members.
  std::size_t PlaceOf(std::string_view calendar) const;

  /// Removes `calendar` with its colours; false when it is no member.
  bool Remove(std::string_view calendar);
};

/// A group view as lists of choices show it.
struct GroupViewChoice {
  int Id = 0;
  std::string Name;  ///< without "@"
  std::string FriendlyName;
};

/// A view over several calendars as its owner keeps it.
struct GroupView {
  std::optional<int> Id;  ///< its `GroupID`; nothing before it is stored
  std::string Owner;
  std::string Name;  ///< letters and digits; what calendar names address it by, after an "@"
  std::string FriendlyName;
  GroupViewMembers Members;
};

}  // namespace orlune
