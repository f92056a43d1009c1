#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orlune {

/// The members of a group view with their colours by position; a colour may be empty or missing.
struct GroupViewMembers {
  std::vector<std::string> Calendars;
  std::vector<std::string> BackGround;
  std::vector<std::string> ForeGround;

  /// The colour of the member at `place`, counted from 0; "" when it has none.
  std::string_view BackGroundAt(std::size_t place) const;
  std::string_view ForeGroundAt(std::size_t place) const;

  /// Removes `calendar` with its colours; false when it is not a member.
  bool Remove(std::string_view calendar);
};

/// Finds the places of calendars among the members of a group view, each in the same time whatever the number
/// of members.
class MemberPlaces {
 public:
  explicit MemberPlaces(const GroupViewMembers& members);

  /// The first place of `calendar`, ignoring case; `std::string::npos` when it is not a member. (Not the
  /// number of members: there may be more colours than members.)
  std::size_t PlaceOf(std::string_view calendar) const;

 private:
  std::unordered_map<std::string, std::size_t> places_;  ///< by the name in lower case
};

/// A group view as selection lists show it.
struct GroupViewChoice {
  int Id = 0;
  std::string Name;  ///< without "@"
  std::string FriendlyName;
};

/// A group view as its owner edits it.
struct GroupView {
  std::optional<int> Id;  ///< its `GroupID`; nothing until it is stored
  std::string Owner;
  std::string Name;  ///< letters and digits; with "@" in front it addresses the view as a calendar
  std::string FriendlyName;
  GroupViewMembers Members;
};

}  // namespace orlune
