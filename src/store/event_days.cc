#include "store/event_days.h"

#include <algorithm>
#include <utility>

#include "base/dates.h"
#include "store/database_access.h"
#include "store/rows.h"

namespace orlune {
namespace {

constexpr std::string_view kListed = "listed";
constexpr std::string_view kLeftOut = "left out";

std::vector<EventDay> ReadDays(ResultSet& rows) {
  const int event = rows.Column("EventID");
  const int day = rows.Column("EventDay");
  const int role = rows.Column("Role");
  std::vector<EventDay> days;
  while (rows.Next()) {
    const auto date = DateOf(rows.Get(day));
    if (date)
      days.push_back({NumberOf(rows.Get(event)).value_or(0), *date, TextOf(rows.Get(role)) == kListed});
  }
  return days;
}

void AddDays(Connection& database, const RegionalSettings& regional, int eventId, std::span<const Date> days,
             std::string_view role) {
  for (const Date day : days) {
    database.Execute(Statement("INSERT INTO EventDays (EventID, EventDay, Role) VALUES ({}, '{}', '{}')",
                               eventId, FormatShortDate(regional, day), role));
  }
}

void KeepDays(Connection& database, const RegionalSettings& regional, int eventId, std::span<const Date> kept,
              std::span<const Date> stored, std::string_view role) {
  for (const Date day : stored) {
    if (std::ranges::binary_search(kept, day)) continue;
    database.Execute(Statement(
        "DELETE FROM EventDays WHERE (EventID = {}) AND (Role = '{}') AND (EventDay = DateValue('{}'))",
        eventId, role, FormatShortDate(regional, day)));
  }
}

}  // namespace

Query<std::vector<EventDay>> EventDaysOfCalendars(std::span<const std::string> owners) {
  if (owners.empty()) return {};
  return {Statement("SELECT EventDays.EventID, EventDays.EventDay, EventDays.Role FROM EventDays "
                    "INNER JOIN Events ON EventDays.EventID = Events.EventID WHERE (Owner IN ({})) "
                    "ORDER BY EventDay",
                    QuotedList(owners)),
          ReadDays};
}

Query<std::vector<EventDay>> EventDaysOf(std::string_view ids) {
  return {Statement("SELECT EventID, EventDay, Role FROM EventDays WHERE (EventID IN ({})) ORDER BY EventDay",
                    ids),
          ReadDays};
}

Query<EventDays> EventDaysOf(int eventId) {
  return {Statement("SELECT EventID, EventDay, Role FROM EventDays WHERE (EventID = {}) ORDER BY EventDay",
                    eventId),
          [eventId](ResultSet& rows) { return std::move(DaysByEvent(ReadDays(rows))[eventId]); }};
}

Query<DaysOfEvents> EventDaysOfPeriod(const RegionalSettings& regional, std::span<const std::string> owners,
                                      Date first, Date last) {
  const std::string from = FormatShortDate(regional, first);
  const std::string to = FormatShortDate(regional, last);
  // The conditions on events are those of the index that finds the repeating ones of a period.
  return {Statement("SELECT EventDays.EventID, EventDays.EventDay, EventDays.Role FROM EventDays "
                    "INNER JOIN Events ON EventDays.EventID = Events.EventID WHERE (Owner In ({})) "
                    "AND Type <> 'none' AND BeginDate <= DateValue('{}') AND EndDate >= DateValue('{}') "
                    "AND EventDay >= DateValue('{}') AND EventDay <= DateValue('{}') ORDER BY EventDay",
                    QuotedList(owners), to, from, from, to),
          [](ResultSet& rows) { return DaysByEvent(ReadDays(rows)); }};
}

DaysOfEvents DaysByEvent(std::span<const EventDay> days) {
  DaysOfEvents byEvent;
  for (const EventDay& day : days) {
    EventDays& ofEvent = byEvent[day.EventId];
    (day.IsListed ? ofEvent.Listed : ofEvent.LeftOut).push_back(day.Day);
  }
  return byEvent;
}

void ReplaceEventDays(Connection& database, const RegionalSettings& regional, int eventId,
                      const EventDays& days) {
  database.Execute(Statement("DELETE FROM EventDays WHERE (EventID = {})", eventId));
  AddEventDays(database, regional, eventId, days);
}

void AddEventDays(Connection& database, const RegionalSettings& regional, int eventId,
                  const EventDays& days) {
  AddDays(database, regional, eventId, days.Listed, kListed);
  AddDays(database, regional, eventId, days.LeftOut, kLeftOut);
}

void KeepEventDays(Connection& database, const RegionalSettings& regional, int eventId, const EventDays& days,
                   const EventDays& stored) {
  KeepDays(database, regional, eventId, days.Listed, stored.Listed, kListed);
  KeepDays(database, regional, eventId, days.LeftOut, stored.LeftOut, kLeftOut);
}

}  // namespace orlune
