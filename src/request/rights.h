#pragma once

#include <string_view>

namespace orlune {

struct ComponentState;

/// Whether the request has a user at all.
bool IsLoggedIn(const ComponentState& state);
/// Whether the user is the administrator.
bool IsAdministrator(const ComponentState& state);
/// Whether the user may change an event of the calendar `owner`: it is the user's own, compared ignoring
/// case, or a group's that the user administers.
bool MayChangeEventsOf(const ComponentState& state, std::string_view owner);
/// Whether the viewed calendar is that of the user who is logged in.
bool IsViewingOwnCalendar(const ComponentState& state);

}  // namespace orlune
