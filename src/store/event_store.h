#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/regional_settings.h"
#include "model/event_search.h"
#include "model/ol_event.h"
#include "platform/database.h"
#include "store/query.h"

namespace orlune {

// The table Events. Functions that write throw DatabaseError. `ids` are event numbers joined with ", ".

/// Writes the columns that belong to the event's `Type`: as a new row when it has no `EventID`, else into its
/// own, if its calendar is one of `changeable`. Columns of other kinds keep what they hold. Apostrophes and
/// double quotes of title and comments are stored as character references.
void SaveEvent(Connection& database, const RegionalSettings& regional, const OL_Event& event,
               std::span<const std::string> changeable);

/// Deletes the events numbered in `ids`, which are joined with ", ", as far as their calendars are among
/// `changeable`.
void DeleteEvents(Connection& database, std::string_view ids, std::span<const std::string> changeable);

/// The events that may occur from `first` to `last`, both inclusive, by `BeginTime`: for the view "lomat" the
/// absences of everybody, for "julkaisut" the events of the calendar Julkaisut, for any other view those of
/// the calendars `owners`.
Query<std::vector<OL_Event>> EventsOfPeriod(const RegionalSettings& regional, std::string_view view,
                                            std::span<const std::string> owners, Date first, Date last);

Query<std::optional<OL_Event>> FindEvent(int id);
Query<std::vector<std::string>> OwnersOfEvents(std::string_view ids);
/// The event with only those fields set that determine on which days it occurs.
Query<std::optional<OL_Event>> OccurrenceRuleOf(int id);

/// The hits of `search`, the earliest first. Its start date has to be a valid one. With `changeable`, private
/// events of other calendars are none.
Query<std::vector<FoundEvent>> FindEvents(const EventSearch& search, std::string_view loginName,
                                          const std::optional<std::vector<std::string>>& changeable);

}  // namespace orlune
