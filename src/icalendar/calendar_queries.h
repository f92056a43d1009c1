#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "exchange/calendar_text.h"
#include "icalendar/time_zones.h"

namespace orlune {

// What clients ask for besides whole objects; see `CalendarText`.

std::string ExpandedText(std::string_view text, const UtcPeriod& period, const NamedZone& server);
bool HasProperties(std::string_view text, std::span<const PropertyFilter> filters);
std::string FreeBusyCalendar(const UtcPeriod& period, std::span<const BusyPeriod> busy);

}  // namespace orlune
