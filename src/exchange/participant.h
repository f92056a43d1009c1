#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"

namespace orlune {

/// A calendar or group view as a user may share it with their devices.
struct SharedCalendar {
  std::string Name;  ///< of the calendar as it is stored, or "@" and that of a group view
  std::string FriendlyName;
  bool MayChange = false;  ///< the user's own, and groups that they administer
  bool IsOwn = false;
  std::string Colour{};  ///< as the user's device has set it, such as "#FF0000FF"; "" when none has
  std::string Order{};   ///< a whole number from a device; "" when none has set it

  bool IsGroupView() const { return Name.starts_with('@'); }
};

/// A user to whom calendars are shown through something else than pages.
struct Participant {
  std::string LoginName;  ///< as it is stored
  std::string FriendlyName;
  /// Their own calendar first, then those of groups that they belong to or administer, then their group
  /// views.
  std::vector<SharedCalendar> Calendars;

  /// Null when they have no such calendar; names are compared ignoring case.
  const SharedCalendar* Find(std::string_view name) const;
};

/// Nothing when there is no such user. Throws DatabaseError.
std::optional<Participant> LoadParticipant(Connection& database, std::string_view loginName);

/// What a device has set for a calendar of the user: its colour and its order, or nothing for what stays as
/// it is. Throws DatabaseError.
void StoreColourAndOrder(Connection& database, const Participant& participant, const SharedCalendar& calendar,
                         const std::optional<std::string>& colour, const std::optional<std::string>& order);

}  // namespace orlune
