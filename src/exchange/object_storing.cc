#include <algorithm>

#include "base/lists.h"
#include "base/text.h"
#include "exchange/calendar_sources.h"
#include "exchange/object_batch.h"
#include "exchange/object_names.h"
#include "exchange/row_text.h"
#include "exchange/shared_objects.h"
#include "store/calendar_objects.h"
#include "store/event_store.h"
#include "store/event_types.h"
#include "store/sharing_tables.h"
#include "store/transaction.h"

namespace orlune {
namespace {

std::optional<SharedObject> FindObject(Connection& database, const ExchangeTools& tools,
                                       const SharedCalendar& calendar, const std::string& name) {
  std::vector<SharedObject> found =
      LoadObjects(database, tools, calendar, {.Names = std::vector<std::string>{name}});
  if (found.empty()) return std::nullopt;
  return std::move(found.front());
}

/// Whether a list of quoted ETags, or "*", names the object (RFC 9110, section 13.1).
bool Names(std::string_view header, const std::optional<SharedObject>& object) {
  if (!object) return false;
  if (TrimBlanks(header) == "*") return true;
  const std::string quoted = "\"" + object->ETag + "\"";
  bool isNamed = false;
  while (!header.empty()) {
    const std::size_t comma = header.find(',');
    isNamed |= TrimBlanks(header.substr(0, comma)) == quoted;
    header.remove_prefix(comma == std::string_view::npos ? header.size() : comma + 1);
  }
  return isNamed;
}

bool Holds(const WriteCondition& condition, const std::optional<SharedObject>& object) {
  if (condition.IfMatch && !Names(*condition.IfMatch, object)) return false;
  return !condition.IfNoneMatch || !Names(*condition.IfNoneMatch, object);
}

/// The name of the object of this calendar that has the UID; "" when none has.
std::string NameOfUid(Connection& database, const SharedCalendar& calendar, std::string_view uid,
                      std::string_view databaseName) {
  std::vector<std::string> ids;
  std::vector<StoredObject> objects = Ask(database, ObjectsWithUid(uid));
  std::erase_if(objects, [uid](const StoredObject& object) { return object.Uid != uid; });
  ids.reserve(objects.size());
  for (const StoredObject& object : objects) ids.push_back(std::to_string(object.Id));
  const auto members =
      ids.empty() ? std::vector<ObjectMember>() : Ask(database, MembersOfObjects(JoinList(ids)));
  for (const ObjectMember& member : members) {
    const auto owners = Ask(database, OwnersOfEvents(std::to_string(member.EventId)));
    if (owners.empty() || !EqualIgnoringCase(owners.front(), calendar.Name)) continue;
    return std::ranges::find(objects, member.ObjectId, &StoredObject::Id)->ResourceName;
  }
  const auto number = NumberOfUid(uid, databaseName);
  if (!number) return "";
  const std::string id = std::to_string(*number);
  const auto [owners, ties] = Ask(database, OwnersOfEvents(id), MembershipsOfEvents(id));
  const bool isHere = !owners.empty() && EqualIgnoringCase(owners.front(), calendar.Name);
  return isHere && ties.empty() ? NameOfNumber(*number, databaseName) : "";
}

}  // namespace

WriteOutcome PutObject(Connection& database, const ExchangeTools& tools, const SharedCalendar& calendar,
                       const std::string& name, const PlannedObject& planned,
                       const WriteCondition& condition) {
  if (!calendar.MayChange) return {WriteResult::kForbidden};
  Transaction transaction(database);
  const auto existing = FindObject(database, tools, calendar, name);
  if (!Holds(condition, existing)) return {WriteResult::kConditionFailed};
  if (existing && existing->Object.Uid != planned.Uid) return {WriteResult::kUidConflict, "", name};
  if (!existing) {
    // Such an address is that of an event to come.
    const std::string databaseName = Ask(database, DatabaseNameQuery());
    if (NumberOfName(name, databaseName)) return {WriteResult::kForbidden};
    std::string conflict = NameOfUid(database, calendar, planned.Uid, databaseName);
    if (!conflict.empty()) return {WriteResult::kUidConflict, "", std::move(conflict)};
  }
  const ObjectChange change{existing ? &*existing : nullptr, name, &planned};
  StoreObjects(database, tools, calendar, {&change, 1});
  transaction.Commit();
  return {existing ? WriteResult::kChanged : WriteResult::kCreated, ETagOfText(tools.Secrets, planned.Text)};
}

WriteOutcome DeleteObject(Connection& database, const ExchangeTools& tools, const SharedCalendar& calendar,
                          const std::string& name, const WriteCondition& condition) {
  if (!calendar.MayChange) return {WriteResult::kForbidden};
  Transaction transaction(database);
  const auto existing = FindObject(database, tools, calendar, name);
  if (!Holds(condition, existing)) return {WriteResult::kConditionFailed};
  if (!existing) return {WriteResult::kNotFound};
  std::vector<std::string> ids;
  for (const ObjectEvent& row : existing->Object.Events) ids.push_back(std::to_string(row.Event.EventID));
  DeleteEvents(database, JoinList(ids), {{calendar.Name}});
  transaction.Commit();
  return {WriteResult::kDeleted};
}

Week WeekOf(Connection& database, const SharedCalendar& calendar) {
  return Weekends(Ask(database, WeekendsOf({{calendar.Name}}))).WeekOf(calendar.Name);
}

std::vector<std::string> KnownEventTypes(Connection& database) {
  std::vector<std::string> names;
  for (const EventTypeEntry& type : Ask(database, AllEventTypes())) names.push_back(PlainText(type.TypeName));
  std::erase(names, "");
  return names;
}

}  // namespace orlune
