#include "store/calendar_objects.h"

#include "base/dates.h"
#include "store/database_access.h"
#include "store/event_reader.h"
#include "store/rows.h"

namespace orlune {
namespace {

template <class Row>
using Reader = Row (*)(const ResultSet& row);

template <class Row>
std::vector<Row> ReadAll(ResultSet& rows, Reader<Row> read) {
  std::vector<Row> all;
  while (rows.Next()) all.push_back(read(rows));
  return all;
}

int NumberIn(const ResultSet& row, std::string_view column) {
  return NumberOf(row.Get(row.Column(column))).value_or(0);
}

StoredObject ReadObject(const ResultSet& row) {
  return {NumberIn(row, "ObjectID"), TextIn(row, "ResourceName"), TextIn(row, "UID"),
          TextIn(row, "ObjectText"), TextIn(row, "RowsDigest"),   DateOf(row.Get(row.Column("ListedUntil")))};
}

std::vector<StoredObject> ReadObjects(ResultSet& rows) {
  return ReadAll<StoredObject>(rows, ReadObject);
}

std::vector<OL_Event> ReadEvents(ResultSet& rows) {
  const EventReader reader(rows);
  std::vector<OL_Event> events;
  while (rows.Next()) events.push_back(reader.Read(rows));
  return events;
}

std::vector<ObjectMember> ReadMembers(ResultSet& rows) {
  const int object = rows.Column("ObjectID");
  const int event = rows.Column("EventID");
  const int place = rows.Column("Place");
  const auto number = [&](int column) { return NumberOf(rows.Get(column)).value_or(0); };
  std::vector<ObjectMember> members;
  while (rows.Next()) members.push_back({number(object), number(event), number(place)});
  return members;
}

Query<int> Highest(Statement statement, std::string_view column) {
  return {std::move(statement),
          [column](ResultSet& rows) { return rows.Next() ? NumberIn(rows, column) : 0; }};
}

Query<std::vector<int>> Numbers(Statement statement, std::string_view column) {
  return {std::move(statement), [column](ResultSet& rows) {
            const int position = rows.Column(column);
            std::vector<int> numbers;
            while (rows.Next()) numbers.push_back(NumberOf(rows.Get(position)).value_or(0));
            return numbers;
          }};
}

std::vector<ColumnValue> KeptColumns(const RegionalSettings& regional, const StoredObject& object) {
  return {{"UID", SqlText(object.Uid)},
          {"ObjectText", SqlText(object.Text)},
          {"RowsDigest", SqlText(object.RowsDigest)},
          {"ListedUntil", object.ListedUntil ? SqlText(FormatShortDate(regional, *object.ListedUntil))
                                             : SqlValue(std::nullopt)}};
}

}  // namespace

Query<std::vector<OL_Event>> EventsOfCalendars(std::span<const std::string> owners) {
  if (owners.empty()) return {};
  return {Statement("SELECT * FROM Events WHERE (Owner IN ({})) ORDER BY EventID", QuotedList(owners)),
          ReadEvents};
}

Query<std::vector<ObjectMember>> MembersInCalendars(std::span<const std::string> owners) {
  if (owners.empty()) return {};
  return {
      Statement("SELECT ObjectEvents.ObjectID, ObjectEvents.EventID, ObjectEvents.Place FROM ObjectEvents "
                "INNER JOIN Events ON ObjectEvents.EventID = Events.EventID WHERE (Owner IN ({}))",
                QuotedList(owners)),
      ReadMembers};
}

Query<std::vector<StoredObject>> ObjectsWithIds(std::string_view ids) {
  return {Statement("SELECT * FROM CalendarObjects WHERE (ObjectID IN ({})) ORDER BY ObjectID", ids),
          ReadObjects};
}

Query<std::vector<ObjectMember>> MembersOfObjects(std::string_view ids) {
  return {Statement("SELECT ObjectID, EventID, Place FROM ObjectEvents WHERE (ObjectID IN ({}))", ids),
          ReadMembers};
}

Query<std::vector<ObjectMember>> MembershipsOfEvents(std::string_view ids) {
  return {Statement("SELECT ObjectID, EventID, Place FROM ObjectEvents WHERE (EventID IN ({}))", ids),
          ReadMembers};
}

Query<std::vector<OL_Event>> EventsWithIds(std::string_view ids) {
  return {Statement("SELECT * FROM Events WHERE (EventID IN ({})) ORDER BY EventID", ids), ReadEvents};
}

Query<std::vector<StoredObject>> ObjectsNamed(std::span<const std::string> names) {
  return {Statement("SELECT * FROM CalendarObjects WHERE (ResourceName IN ({})) ORDER BY ObjectID",
                    QuotedList(names)),
          ReadObjects};
}

Query<std::vector<StoredObject>> ObjectsWithUid(std::string_view uid) {
  return {Statement("SELECT * FROM CalendarObjects WHERE (UID = '{}') ORDER BY ObjectID", uid), ReadObjects};
}

Query<std::vector<StoredObject>> ObjectsListedUntil(const RegionalSettings& regional, Date before) {
  return {Statement("SELECT TOP 100 * FROM CalendarObjects WHERE (ListedUntil < DateValue('{}')) "
                    "ORDER BY ListedUntil",
                    FormatShortDate(regional, before)),
          ReadObjects};
}

Query<int> HighestEventId() {
  return Highest(Statement("SELECT TOP 1 EventID FROM Events ORDER BY EventID DESC"), "EventID");
}

Query<int> HighestObjectId() {
  return Highest(Statement("SELECT TOP 1 ObjectID FROM CalendarObjects ORDER BY ObjectID DESC"), "ObjectID");
}

Query<std::vector<int>> EventIdsAbove(int id) {
  return Numbers(Statement("SELECT EventID FROM Events WHERE (EventID > {}) ORDER BY EventID", id),
                 "EventID");
}

Query<std::vector<int>> ObjectIdsAbove(int id) {
  return Numbers(
      Statement("SELECT ObjectID FROM CalendarObjects WHERE (ObjectID > {}) ORDER BY ObjectID", id),
      "ObjectID");
}

void AddObject(Connection& database, const RegionalSettings& regional, const StoredObject& object) {
  std::vector<ColumnValue> columns = KeptColumns(regional, object);
  columns.push_back({"ResourceName", SqlText(object.ResourceName)});
  database.Execute(BuildSql(SqlMode::kInsert, "CalendarObjects", columns));
}

void ChangeObject(Connection& database, const RegionalSettings& regional, const StoredObject& object) {
  database.Execute(BuildSql(SqlMode::kUpdate, "CalendarObjects", KeptColumns(regional, object),
                            Statement("WHERE (ObjectID = {})", object.Id)));
}

void AddObjectMember(Connection& database, const ObjectMember& member) {
  database.Execute(Statement("INSERT INTO ObjectEvents (ObjectID, EventID, Place) VALUES ({}, {}, {})",
                             member.ObjectId, member.EventId, member.Place));
}

}  // namespace orlune
