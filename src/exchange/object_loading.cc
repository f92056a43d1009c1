#include <algorithm>
#include <charconv>
#include <map>
#include <unordered_map>
#include <unordered_set>

#include "base/lists.h"
#include "base/text.h"
#include "exchange/calendar_sources.h"
#include "exchange/object_names.h"
#include "exchange/row_text.h"
#include "exchange/shared_objects.h"
#include "model/occurrence_dates.h"
#include "store/calendar_objects.h"
#include "store/event_days.h"
#include "store/sharing_tables.h"

namespace orlune {
namespace {

constexpr std::size_t kMostLookedUp = 200;  // names; of more all objects are read
constexpr std::size_t kIdsOfQuery = 64;     // and of shorter queries a power of four

/// What is stored of some objects.
struct Rows {
  std::vector<OL_Event> Events;  ///< by number
  std::vector<ObjectMember> Members;
  std::vector<EventDay> Days;
  std::vector<StoredObject> Objects;
};

/// Lists of the numbers, of few lengths, since each length is a statement to prepare; the last number is
/// repeated.
std::vector<std::string> IdLists(std::span<const int> ids) {
  std::vector<std::string> lists;
  while (!ids.empty()) {
    std::size_t length = 1;
    while (length < std::min(ids.size(), kIdsOfQuery)) length *= 4;
    std::vector<std::string> items;
    for (std::size_t i = 0; i < length; ++i)
      items.push_back(std::to_string(ids[std::min(i, ids.size() - 1)]));
    lists.push_back(JoinList(items));
    ids = ids.subspan(std::min(length, ids.size()));
  }
  return lists;
}

template <class Row, class Make>
std::vector<Row> AskInParts(Connection& database, const std::vector<int>& ids, Make make) {
  std::vector<Query<std::vector<Row>>> queries;
  for (const std::string& list : IdLists(ids)) queries.push_back(make(list));
  std::vector<Row> all;
  for (std::vector<Row>& part : AskAll<std::vector<Row>>(database, queries))
    std::ranges::move(part, std::back_inserter(all));
  return all;
}

std::vector<int> Distinct(std::vector<int> ids) {
  std::ranges::sort(ids);
  ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
  return ids;
}

std::vector<int> DistinctIds(const std::vector<ObjectMember>& members, int ObjectMember::*number) {
  std::vector<int> ids;
  ids.reserve(members.size());
  for (const ObjectMember& member : members) ids.push_back(member.*number);
  return Distinct(std::move(ids));
}

std::vector<int> IdsOf(const std::vector<StoredObject>& objects) {
  std::vector<int> ids;
  ids.reserve(objects.size());
  for (const StoredObject& object : objects) ids.push_back(object.Id);
  return ids;
}

Rows AllRows(Connection& database, std::span<const std::string> sources) {
  Rows rows;
  std::tie(rows.Events, rows.Members, rows.Days) =
      Ask(database, EventsOfCalendars(sources), MembersInCalendars(sources), EventDaysOfCalendars(sources));
  rows.Objects = AskInParts<StoredObject>(database, DistinctIds(rows.Members, &ObjectMember::ObjectId),
                                          [](const std::string& ids) { return ObjectsWithIds(ids); });
  return rows;
}

/// The rows of the objects with these names; of objects with other names some, too.
Rows RowsNamed(Connection& database, std::span<const std::string> sources, std::span<const std::string> names,
               std::string_view databaseName) {
  Rows rows;
  if (names.empty()) return rows;
  std::vector<int> eventIds;
  for (const std::string& name : names) {
    if (const auto number = NumberOfName(name, databaseName)) eventIds.push_back(*number);
  }
  const auto membersOf = [](const std::string& ids) { return MembersOfObjects(ids); };
  const auto tiesOf = [](const std::string& ids) { return MembershipsOfEvents(ids); };
  const auto objectsWith = [](const std::string& ids) { return ObjectsWithIds(ids); };
  const auto ties = AskInParts<ObjectMember>(database, eventIds, tiesOf);
  std::vector<int> objectIds = DistinctIds(ties, &ObjectMember::ObjectId);
  for (const StoredObject& object : Ask(database, ObjectsNamed(names))) objectIds.push_back(object.Id);
  rows.Objects = AskInParts<StoredObject>(database, Distinct(std::move(objectIds)), objectsWith);
  rows.Members = AskInParts<ObjectMember>(database, IdsOf(rows.Objects), membersOf);

  std::ranges::move(DistinctIds(rows.Members, &ObjectMember::EventId), std::back_inserter(eventIds));
  eventIds = Distinct(std::move(eventIds));
  rows.Events =
      AskInParts<OL_Event>(database, eventIds, [](const std::string& ids) { return EventsWithIds(ids); });
  rows.Days =
      AskInParts<EventDay>(database, eventIds, [](const std::string& ids) { return EventDaysOf(ids); });
  std::erase_if(rows.Events, [&](const OL_Event& event) {
    return std::ranges::none_of(
        sources, [&](const std::string& source) { return EqualIgnoringCase(source, event.Owner); });
  });
  return rows;
}

/// Puts the rows together to objects.
class ObjectMaker {
 public:
  ObjectMaker(const ExchangeTools& tools, const SharedCalendar& calendar, Weekends weekends,
              std::string databaseName)
      : tools_(tools),
        calendar_(calendar),
        weekends_(std::move(weekends)),
        databaseName_(std::move(databaseName)) {}

  std::vector<SharedObject> Make(Rows rows) {
    for (const ObjectMember& member : rows.Members) members_.emplace(member.EventId, member);
    for (StoredObject& object : rows.Objects) stored_.emplace(object.Id, std::move(object));
    days_ = DaysByEvent(rows.Days);
    for (OL_Event& event : rows.Events) Add(std::move(event));
    for (SharedObject& made : objects_) Finish(made);
    std::erase_if(objects_, [](const SharedObject& made) { return made.Object.Events.empty(); });
    return std::move(objects_);
  }

 private:
  bool SeesInFull() const { return calendar_.MayChange && !calendar_.IsGroupView(); }

  void Add(OL_Event event) {
    if (!SeesInFull() && !event.IsShown()) return;
    ObjectEvent row{std::move(event), {}, 0};
    if (const auto days = days_.find(row.Event.EventID); days != days_.end())
      row.Days = std::move(days->second);
    const auto member = members_.find(row.Event.EventID);
    const auto stored = member == members_.end() ? stored_.end() : stored_.find(member->second.ObjectId);
    if (stored == stored_.end()) return AddNew(std::move(row), nullptr);
    row.Place = member->second.Place;
    // In a group view several calendars may have events of one object.
    const auto key = std::pair(stored->first, ToLower(row.Event.Owner));
    const auto [place, isNew] = placeOf_.emplace(key, objects_.size());
    if (isNew) return AddNew(std::move(row), &stored->second);
    objects_[place->second].Object.Events.push_back(std::move(row));
  }

  void AddNew(ObjectEvent row, const StoredObject* stored) {
    CalendarObject object;
    const int number = row.Event.EventID;
    object.Name = stored == nullptr ? NameOfNumber(number, databaseName_) : stored->ResourceName;
    object.Uid = stored == nullptr ? UidOfNumber(number, databaseName_) : stored->Uid;
    if (stored != nullptr) {
      object.Id = stored->Id;
      object.KeptText = stored->Text;
    }
    SharedObject made{std::move(object), weekends_.WeekOf(row.Event.Owner), ""};
    made.Object.Events.push_back(std::move(row));
    objects_.push_back(std::move(made));
  }

  void Finish(SharedObject& made) {
    CalendarObject& object = made.Object;
    std::ranges::sort(object.Events, {}, &ObjectEvent::Place);
    if (const auto stored = stored_.find(object.Id); stored != stored_.end() && !object.KeptText.empty())
      object.IsAsKept = tools_.Secrets.Digest(RowsOf(made)) == stored->second.RowsDigest;
    if (object.KeptText.empty() && !HasDays(made)) object.Events.clear();
    if (!SeesInFull() &&
        std::ranges::any_of(object.Events, [](const ObjectEvent& row) { return row.Event.Private; }))
      Hide(made);
    if (calendar_.IsGroupView()) MakeUnique(object);
    made.ETag = ETagOf(made);
  }

  static bool HasDays(const SharedObject& made) {
    return std::ranges::any_of(made.Object.Events, [&](const ObjectEvent& row) {
      return row.Event.Type != Repetition::kUnknown &&
             !OccurrenceDates(row.Event, made.Week, 1, row.Days).empty();
    });
  }

  /// Leaves nothing but the time.
  void Hide(SharedObject& made) const {
    BecomeUntold(made.Object);
    for (ObjectEvent& row : made.Object.Events) {
      row.Event.EventName = tools_.PrivateTitle;
      row.Event.Comments.clear();
      row.Event.EventType.clear();
      row.Event.Private = true;
    }
  }

  /// Within a group view names and UIDs are those of one object each.
  void MakeUnique(CalendarObject& object) {
    const bool hasOwnName = usedNames_.insert(ToLower(object.Name)).second;
    const bool hasOwnUid = usedUids_.insert(object.Uid).second;
    if (!hasOwnName || !hasOwnUid) BecomeUntold(object);
  }

  /// Nothing is left of what a client has sent, not even the name.
  void BecomeUntold(CalendarObject& object) const {
    const int number = object.Events.empty() ? 0 : object.Events.front().Event.EventID;
    object.Name = NameOfNumber(number, databaseName_);
    object.Uid = UidOfNumber(number, databaseName_);
    object.KeptText.clear();
    object.IsAsKept = false;
  }

  std::string RowsOf(const SharedObject& made) const {
    return TextOfRows(made.Object.Events, made.Week, tools_.Texts.ZoneName());
  }

  std::string ETagOf(const SharedObject& made) const {
    const CalendarObject& object = made.Object;
    if (object.IsAsKept) return ETagOfText(tools_.Secrets, object.KeptText);
    return ETagOfText(tools_.Secrets, object.KeptText + '\0' + object.Uid + '\0' + RowsOf(made));
  }

  const ExchangeTools& tools_;
  const SharedCalendar& calendar_;
  const Weekends weekends_;
  const std::string databaseName_;
  std::unordered_map<int, ObjectMember> members_;
  std::unordered_map<int, StoredObject> stored_;
  DaysOfEvents days_;
  std::map<std::pair<int, std::string>, std::size_t> placeOf_;
  std::unordered_set<std::string> usedNames_;
  std::unordered_set<std::string> usedUids_;
  std::vector<SharedObject> objects_;
};

bool MayOccur(const SharedObject& object, const ObjectChoice& choice) {
  return std::ranges::any_of(object.Object.Events, [&](const ObjectEvent& row) {
    const OL_Event& event = row.Event;
    const Date last = event.Type == Repetition::kNone ? event.BeginDate : event.EndDate;
    return (!choice.First || last >= *choice.First) && (!choice.Last || event.BeginDate <= *choice.Last);
  });
}

}  // namespace

std::vector<SharedObject> LoadObjects(Connection& database, const ExchangeTools& tools,
                                      const SharedCalendar& calendar, const ObjectChoice& choice) {
  const std::vector<std::string> sources = SourcesOf(database, calendar);
  const bool looksUp = choice.Names && choice.Names->size() <= kMostLookedUp && !calendar.IsGroupView();
  const auto [databaseName, weekends] = Ask(database, DatabaseNameQuery(), WeekendsOf(sources));
  Rows rows =
      looksUp ? RowsNamed(database, sources, *choice.Names, databaseName) : AllRows(database, sources);
  std::vector<SharedObject> objects =
      ObjectMaker(tools, calendar, Weekends(weekends), databaseName).Make(std::move(rows));
  if (choice.Names) {
    const std::unordered_set<std::string_view> names(choice.Names->begin(), choice.Names->end());
    std::erase_if(objects, [&](const SharedObject& made) { return !names.contains(made.Object.Name); });
  }
  std::erase_if(objects, [&](const SharedObject& made) { return !MayOccur(made, choice); });
  return objects;
}

}  // namespace orlune
