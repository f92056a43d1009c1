#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/group_view.h"
#include "store/query.h"

namespace orlune {

// The table GroupViews. `name` is a view's internal name, without its "@". Functions that write throw
// DatabaseError.

Query<bool> GroupViewExists(std::string_view name);
/// The names of a view's members; empty when there is no such view.
Query<std::vector<std::string>> MemberNamesOf(std::string_view name);
/// The members with their colours; empty when there is no such view.
Query<GroupViewMembers> MembersOf(std::string_view name);
/// The display name; nothing when there is no such view.
Query<std::optional<std::string>> GroupViewTitle(std::string_view name);
/// The views offered to `loginName`, their own and the administrator's, by display name.
Query<std::vector<GroupViewChoice>> GroupViewsVisibleTo(std::string_view loginName);

/// The views owned by `loginName`, by display name.
Query<std::vector<GroupViewChoice>> GroupViewsOwnedBy(std::string_view loginName);
/// Nothing when there is no such view.
Query<std::optional<GroupView>> GroupViewWithId(int id);
/// An internal name derived from `text` that no view has yet; `text` itself when it is valid and free.
std::string UnusedGroupViewName(Connection& database, std::string_view text);
/// Updates the view, or inserts it when it has no `Id`; a new view gets another name when its own is in use
/// by now. Returns its number.
int StoreGroupView(Connection& database, GroupView view);
void DeleteGroupView(Connection& database, int id);

/// Renames a calendar, as the owner of views and as a member of views.
void RenameInGroupViews(Connection& database, std::string_view oldName, std::string_view newName);
/// Deletes the views owned by `name`, and removes the calendar with its colours from the views of others.
void RemoveFromGroupViews(Connection& database, std::string_view name);

}  // namespace orlune
