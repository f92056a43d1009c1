#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "exchange/calendar_text.h"
#include "icalendar/event_times.h"

namespace orlune {

/// The events of one UID in a text.
struct ObjectParts {
  const Component* Master = nullptr;
  /// Changed occurrences, in the order of their RECURRENCE-IDs; of several with the same one the last.
  std::vector<const Component*> Overrides;
  std::vector<EventTimes> OverrideTimes;  ///< by place in `Overrides`
};

/// Rows of `Overrides[i]` have places from `kPlacesOfEvent * (i + 1)` on, those of the master from 0 on.
inline constexpr int kPlacesOfEvent = 1000;

/// Throws InvalidCalendarText when there are two masters.
ObjectParts PartsOfObject(const std::vector<const Component*>& events, TextZones& zones);

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
  ObjectReader(std::shared_ptr<const NamedZone> server, const ReadingSettings& settings)
      : server_(std::move(server)), settings_(settings) {}

  /// Both throw InvalidCalendarText.
  PlannedObject ReadObject(std::string_view text) const;
  PlannedFile ReadFile(std::string_view text) const;

 private:
  PlannedObject Plan(const std::vector<const Component*>& events, TextZones& zones, WorkBudget& budget) const;

  const std::shared_ptr<const NamedZone> server_;
  const ReadingSettings& settings_;
};

}  // namespace orlune
