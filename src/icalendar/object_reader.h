#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "exchange/calendar_text.h"
#include "icalendar/object_parts.h"

namespace orlune {

/// How the rows of an object are made.
struct PlanSettings {
  const orlune::Week& Week;
  Date ListTo;  ///< days of series without end are listed to this one
};

struct PlannedRows {
  std::vector<ObjectEvent> Rows;  ///< with days, times, and the texts of their events
  bool ListsAhead = false;
  Date ListedTo;
};

/// The title of an event in one line, at most 255 characters as rows keep them; "" without one.
std::string TitleOf(const Component& event);
/// Its description with the line breaks of forms, at most 64 KiB.
std::string CommentsOf(const Component& event);
std::vector<std::string> CategoriesOf(const Component& event);
bool IsPrivate(const Component& event);

/// Throws InvalidCalendarText. The category is not set, nor is a title where there is none.
PlannedRows PlanRows(const ObjectParts& parts, TextZones& zones, const PlanSettings& settings,
                     WorkBudget& budget);

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
