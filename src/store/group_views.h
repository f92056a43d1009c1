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

}  // namespace orlune
