#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"
#include "store/query.h"

namespace orlune {

// The table DeviceSettings: what a user's devices have set for a calendar.

struct DeviceSetting {
  std::string Calendar;  ///< a calendar, or "@" and a group view
  std::string Colour;
  std::string Position;
};
Query<std::vector<DeviceSetting>> DeviceSettingsOf(std::string_view loginName);
/// Replaces the setting of that calendar. Throws DatabaseError.
void StoreDeviceSetting(Connection& database, std::string_view loginName, const DeviceSetting& setting);

}  // namespace orlune
