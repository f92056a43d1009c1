#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/regional_settings.h"
#include "model/event_days.h"
#include "platform/database.h"
#include "store/query.h"

namespace orlune {

// The table EventDays: on which days events occur, or do not, beyond what their rules say. It is there once a
// hosting page has shared. Functions that write throw DatabaseError.

/// A row.
struct EventDay {
  int EventId;
  Date Day;
  bool IsListed;  ///< else it is left out
};

Query<std::vector<EventDay>> EventDaysOfCalendars(std::span<const std::string> owners);
/// `ids` are event numbers joined with ", ".
Query<std::vector<EventDay>> EventDaysOf(std::string_view ids);
Query<EventDays> EventDaysOf(int eventId);
/// Those from `first` to `last`, both inclusive, of the repeating events of the calendars `owners`.
Query<DaysOfEvents> EventDaysOfPeriod(const RegionalSettings& regional, std::span<const std::string> owners,
                                      Date first, Date last);

/// By their events; `days` are in ascending order.
DaysOfEvents DaysByEvent(std::span<const EventDay> days);

/// Replaces the days of the event.
void ReplaceEventDays(Connection& database, const RegionalSettings& regional, int eventId,
                      const EventDays& days);
void AddEventDays(Connection& database, const RegionalSettings& regional, int eventId, const EventDays& days);
/// Removes those of the `stored` days that `days` does not have.
void KeepEventDays(Connection& database, const RegionalSettings& regional, int eventId, const EventDays& days,
                   const EventDays& stored);

}  // namespace orlune
