#include "exchange/upkeep.h"

#include <algorithm>
#include <unordered_set>

#include "exchange/calendar_sources.h"
#include "exchange/row_text.h"
#include "store/calendar_changes.h"
#include "store/calendar_objects.h"
#include "store/event_days.h"
#include "store/event_store.h"
#include "store/transaction.h"

namespace orlune {
namespace {

/// Series are listed five years ahead, see `PlannedObject::ListedUntil`.
constexpr std::chrono::days kAheadAtLeast{4 * 365};
constexpr std::size_t kMostChanges = 100'000;

/// The rows of the object in one calendar, with the days of today's plan.
class ListedSeries {
 public:
  ListedSeries(Connection& database, const ExchangeTools& tools, std::string calendar)
      : database_(database), tools_(tools), calendar_{std::move(calendar), "", true, true} {}

  void Prolong(const StoredObject& stored) {
    auto found =
        LoadObjects(database_, tools_, calendar_, {.Names = std::vector<std::string>{stored.ResourceName}});
    std::erase_if(found, [&](const SharedObject& object) { return object.Object.Id != stored.Id; });
    if (found.empty()) return;
    SharedObject& object = found.front();
    const bool isAsKept = object.Object.IsAsKept;
    const PlannedObject planned = Plan(object);
    for (ObjectEvent& row : object.Object.Events) TakeDays(row, planned);
    StoredObject changed = stored;
    changed.ListedUntil = planned.ListedUntil;
    if (isAsKept)
      changed.RowsDigest =
          tools_.Secrets.Digest(TextOfRows(object.Object.Events, object.Week, tools_.Texts.ZoneName()));
    ChangeObject(database_, tools_.Regional, changed);
  }

 private:
  PlannedObject Plan(const SharedObject& object) const {
    const std::vector<std::string> eventTypes = KnownEventTypes(database_);
    return tools_.Texts.ReadObject(tools_.Texts.ObjectText(object.Object, object.Week),
                                   {object.Week, tools_.Today, eventTypes, tools_.Untitled});
  }

  void TakeDays(ObjectEvent& row, const PlannedObject& planned) {
    const auto found = std::ranges::find(planned.Events, row.Place, &ObjectEvent::Place);
    if (found == planned.Events.end() || row.Event.Type != Repetition::kListed ||
        found->Event.Type != Repetition::kListed || row.Days == found->Days)
      return;
    row.Days = found->Days;
    row.Event.EndDate = found->Event.EndDate;
    SaveEvent(database_, tools_.Regional, row.Event, {{calendar_.Name}});
    ReplaceEventDays(database_, tools_.Regional, row.Event.EventID, row.Days);
  }

  Connection& database_;
  const ExchangeTools& tools_;
  const SharedCalendar calendar_;
};

std::unordered_set<std::string> CalendarsWith(Connection& database, const StoredObject& object) {
  std::unordered_set<std::string> calendars;
  for (const ObjectMember& member : Ask(database, MembersOfObjects(std::to_string(object.Id)))) {
    for (std::string& owner : Ask(database, OwnersOfEvents(std::to_string(member.EventId))))
      calendars.insert(std::move(owner));
  }
  return calendars;
}

/// False for a text that cannot be read any more, since somebody has changed it by hand.
bool Prolong(Connection& database, const ExchangeTools& tools, const StoredObject& object) {
  try {
    for (const std::string& calendar : CalendarsWith(database, object))
      ListedSeries(database, tools, calendar).Prolong(object);
    return true;
  } catch (const InvalidCalendarText&) {
    return false;
  }
}

void ProlongSeries(Connection& database, const ExchangeTools& tools) {
  for (StoredObject& object :
       Ask(database, ObjectsListedUntil(tools.Regional, tools.Today + kAheadAtLeast))) {
    Transaction transaction(database);
    if (!Prolong(database, tools, object)) {
      object.ListedUntil = std::nullopt;
      ChangeObject(database, tools.Regional, object);
    }
    transaction.Commit();
  }
}

}  // namespace

void KeepUpExchange(Connection& database, const ExchangeTools& tools) {
  ProlongSeries(database, tools);
  TrimChanges(database, kMostChanges);
}

}  // namespace orlune
