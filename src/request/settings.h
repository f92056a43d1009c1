#pragma once

namespace orlune {

struct ComponentState;

/// Loads the user's display settings (those of 'admin' when nobody is logged in), the groups that the viewed
/// calendars belong to, the groups that the user administers, and the event types. Returns false when the
/// user who is logged in has no account any more.
bool LoadSettings(ComponentState& state);

/// Announces to the database what `LoadSettings` will ask, as far as that is known before: the user and the
/// calendar have to be.
void AnnounceSettings(const ComponentState& state);

/// Appends the name of every group to the groups that the user administers, or to those that the viewed
/// calendar belongs to.
void ListAllGroups(ComponentState& state, bool intoAdminships);

}  // namespace orlune
