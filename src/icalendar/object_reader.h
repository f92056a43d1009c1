#pragma once

#include <string_view>
#include <vector>

#include "exchange/calendar_text.h"
#include "icalendar/object_parts.h"

namespace orlune {

/// Reads texts into planned objects. Serves one call.
class ObjectReader {
 public:
  ObjectReader(const NamedZone& server, const ReadingSettings& settings)
      : server_(server), settings_(settings) {}

  /// Both throw InvalidCalendarText.
  PlannedObject ReadObject(std::string_view text) const;
  PlannedFile ReadFile(std::string_view text) const;

 private:
  PlannedObject Plan(const std::vector<const Component*>& events, TextZones& zones, WorkBudget& budget) const;

  const NamedZone& server_;
  const ReadingSettings& settings_;
};

}  // namespace orlune
