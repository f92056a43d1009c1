#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/group_view.h"
#include "store/query.h"

namespace orlune {

// The table GroupViews. `name` is a view's internal name, without its "@". What writes throws DatabaseError.

Query<bool> GroupViewExists(std::string_view name);
/// The names of a view's members; none when there is no such view.
Query<std::vector<std::string>> MemberNamesOf(std::string_view name);
/// The members with their colours; none when there is no such view.
Query<GroupViewMembers> MembersOf(std::string_view name);
/// The display name; nothing when there is no such view.
Query<std::optional<std::string>> GroupViewTitle(std::string_view name);
/// The views that `loginName` may choose from, their own and the administrator's, by display name.
Query<std::vector<GroupViewChoice>> GroupViewsVisibleTo(std::string_view loginName);

/// The views of the owner `loginName`, by display name.
Query<std::vector<GroupViewChoice>> GroupViewsOwnedBy(std::string_view loginName);
/// Nothing when there is no such view.
Query<std::optional<GroupView>> GroupViewWithId(int id);
/// An internal name made from `text` that no view has yet; `text` itself when it is one.
std::string UnusedGroupViewName(Connection& database, std::string_view text);
/// Writes a view; a new one under a name of its own, should the one that it has be taken by now. Returns its
/// number.
int StoreGroupView(Connection& database, GroupView view);
void DeleteGroupView(Connection& database, int id);

/// Gives the views of the owner `oldName` to `newName`, and the calendar's place in the views of others.
void RenameInGroupViews(Connection& database, std::string_view oldName, std::string_view newName);
/// Deletes the views of the owner `name`, and takes the calendar with its colours out of the views of others.
void RemoveFromGroupViews(Connection& database, std::string_view name);

}  // namespace orlune
