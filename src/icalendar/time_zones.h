#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "icalendar/zone.h"

namespace orlune {

inline constexpr Date kRecent = std::chrono::year{2000} / 1 / 2;

/// A zone of the machine's time zone database.
struct NamedZone {
  std::string Name;  ///< such as "Europe/Helsinki"
  Zone Offsets;
  std::string Definition;  ///< its VTIMEZONE; "" for UTC
  std::string Recent;      ///< the same for times from `kRecent` on, which is much shorter
};

/// Null when there is no such zone. Zones are read once and kept. Thread-safe.
std::shared_ptr<const NamedZone> FindNamedZone(std::string_view name);

/// The name of the zone that the machine is set to; "UTC" when that cannot be told.
std::string MachineZoneName();

}  // namespace orlune
