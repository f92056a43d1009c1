#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/group_view.h"
#include "platform/database.h"

namespace orlune {

/// A view over several calendars as its owner keeps it.
struct GroupView {
  std::optional<int> Id;  ///< its `GroupID`; nothing before it is stored
  std::string Owner;
  std::string Name;  ///< letters and digits; what calendar names address it by, after an "@"
  std::string FriendlyName;
  GroupViewMembers Members;
};

/// Nothing when there is no such view. Throws DatabaseError.
std::optional<GroupView> LoadGroupView(Connection& database, int id);

/// An internal name made from `text` that no view has yet; `text` itself when it is one. Throws
/// DatabaseError.
std::string UnusedViewName(Connection& database, std::string_view text);

/// Writes a view; a new one under a name of its own, should the one that it has be taken by now. Returns its
/// number. Throws DatabaseError.
int StoreGroupView(Connection& database, GroupView view);
/// Throws DatabaseError.
void DeleteGroupView(Connection& database, const GroupView& view);

}  // namespace orlune
