#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/regional_settings.h"
#include "model/ol_event.h"
#include "platform/database.h"
#include "store/query.h"

namespace orlune {

// The tables CalendarObjects and ObjectEvents: what clients have sent, and the events that it
// became. Functions that write throw DatabaseError.

/// A row of CalendarObjects.
struct StoredObject {
  int Id = 0;
  std::string ResourceName;  ///< the last segment of its address
  std::string Uid;
  std::string Text;        ///< as the client sent it
  std::string RowsDigest;  ///< of its events as the text made them
  std::optional<Date> ListedUntil;
};
/// A row of ObjectEvents.
struct ObjectMember {
  int ObjectId;
  int EventId;
  int Place;
};

Query<std::vector<OL_Event>> EventsOfCalendars(std::span<const std::string> owners);
Query<std::vector<ObjectMember>> MembersInCalendars(std::span<const std::string> owners);

/// The same of some objects and events; `ids` are joined with ", ".
Query<std::vector<StoredObject>> ObjectsWithIds(std::string_view ids);
Query<std::vector<ObjectMember>> MembersOfObjects(std::string_view ids);
Query<std::vector<ObjectMember>> MembershipsOfEvents(std::string_view ids);
Query<std::vector<OL_Event>> EventsWithIds(std::string_view ids);

/// Their names and UIDs are compared ignoring case.
Query<std::vector<StoredObject>> ObjectsNamed(std::span<const std::string> names);
Query<std::vector<StoredObject>> ObjectsWithUid(std::string_view uid);
/// Those whose days have to be listed further; the ones with the earliest end, at most `most`.
Query<std::vector<StoredObject>> ObjectsListedUntil(const RegionalSettings& regional, Date before);

/// The highest number; 0 without rows. In a transaction every row that is added later has a higher one.
Query<int> HighestEventId();
Query<int> HighestObjectId();
/// The numbers above `id`, in ascending order: in a transaction those of the rows that it has added, in their
/// order.
Query<std::vector<int>> EventIdsAbove(int id);
Query<std::vector<int>> ObjectIdsAbove(int id);

void AddObject(Connection& database, const RegionalSettings& regional, const StoredObject& object);
/// Replaces what the object keeps; its name stays.
void ChangeObject(Connection& database, const RegionalSettings& regional, const StoredObject& object);
void AddObjectMember(Connection& database, const ObjectMember& member);

}  // namespace orlune
