#include "exchange/object_batch.h"

#include <algorithm>
#include <iterator>

#include "base/lists.h"
#include "exchange/row_text.h"
#include "store/calendar_objects.h"
#include "store/event_days.h"
#include "store/event_store.h"

namespace orlune {
namespace {

const ObjectEvent* FindPlace(std::span<const ObjectEvent> rows, int place) {
  const auto found = std::ranges::find(rows, place, &ObjectEvent::Place);
  return found == rows.end() ? nullptr : &*found;
}

bool SaysTheSameDays(const ObjectEvent& a, const ObjectEvent& b) {
  const auto rule = [](const ObjectEvent& row) {
    const OL_Event& event = row.Event;
    return std::tie(event.Type, event.BeginDate, event.EndDate, event.BeginTime, event.EndTime,
                    event.RepeatWeekday, event.RepeatFrequency, event.RepeatDay, event.RepeatWeekends);
  };
  return rule(a) == rule(b) && a.Days == b.Days;
}

/// The row as a client wants it: `planned` where that differs from `told`, which is what the client was told
/// of `stored`; the rest of `stored` stays.
ObjectEvent Merged(const ObjectEvent& planned, const ObjectEvent& told, const ObjectEvent& stored) {
  ObjectEvent row = planned;
  row.Event.EventID = stored.Event.EventID;
  row.Event.SuggID = stored.Event.SuggID;
  row.Event.SuggestState = stored.Event.SuggestState;
  const auto keep = [&](auto member) {
    if (planned.Event.*member == told.Event.*member) row.Event.*member = stored.Event.*member;
  };
  keep(&OL_Event::EventName);
  keep(&OL_Event::Comments);
  keep(&OL_Event::EventType);
  keep(&OL_Event::Private);
  if (!SaysTheSameDays(planned, told)) return row;
  row.Days = stored.Days;
  const auto take = [&](auto member) { row.Event.*member = stored.Event.*member; };
  take(&OL_Event::Type);
  take(&OL_Event::BeginDate);
  take(&OL_Event::EndDate);
  take(&OL_Event::BeginTime);
  take(&OL_Event::EndTime);
  take(&OL_Event::RepeatWeekday);
  take(&OL_Event::RepeatFrequency);
  take(&OL_Event::RepeatDay);
  take(&OL_Event::RepeatWeekends);
  return row;
}

/// Stores a batch in few round trips: new rows get their numbers together.
class Batch {
 public:
  /// `hasExisting`: whether any of the objects is there already.
  Batch(Connection& database, const ExchangeTools& tools, const SharedCalendar& calendar, bool hasExisting)
      : database_(database),
        tools_(tools),
        owners_{calendar.Name},
        week_(WeekOf(database, calendar)),
        eventTypes_(hasExisting ? KnownEventTypes(database) : std::vector<std::string>()) {}

  void Add(const ObjectChange& change) {
    Entry entry{change, RowsOf(change)};
    for (ObjectEvent& row : entry.Rows) {
      row.Event = AsStored(std::move(row.Event));
      row.Event.Owner = owners_.front();
    }
    entries_.push_back(std::move(entry));
  }

  void Store() {
    const int highestEvent = Ask(database_, HighestEventId());
    for (Entry& entry : entries_) ChangeRows(entry);
    if (newRows_ > 0) NumberRows(Ask(database_, EventIdsAbove(highestEvent)));
    const int highestObject = Ask(database_, HighestObjectId());
    for (Entry& entry : entries_) StoreObject(entry);
    if (newObjects_ > 0) NumberObjects(Ask(database_, ObjectIdsAbove(highestObject)));
    for (const Entry& entry : entries_) Tie(entry);
    for (const Entry& entry : entries_) DeleteGoneRows(entry);
  }

 private:
  struct Entry {
    ObjectChange Change;
    std::vector<ObjectEvent> Rows;
    int ObjectId = 0;
    std::vector<bool> IsNewRow{};
  };

  std::vector<ObjectEvent> RowsOf(const ObjectChange& change) const {
    std::vector<ObjectEvent> rows = change.Planned->Events;
    if (change.Existing == nullptr) return rows;
    const CalendarObject& existing = change.Existing->Object;
    const std::vector<ObjectEvent> told = ToldRows(*change.Existing);
    for (ObjectEvent& row : rows) {
      const ObjectEvent* stored = FindPlace(existing.Events, row.Place);
      const ObjectEvent* before = FindPlace(told, row.Place);
      if (stored == nullptr) continue;
      if (before != nullptr) {
        row = Merged(row, *before, *stored);
      } else {
        row.Event.EventID = stored->Event.EventID;
        row.Event.SuggID = stored->Event.SuggID;
        row.Event.SuggestState = stored->Event.SuggestState;
      }
    }
    return rows;
  }

  /// What the client reads in the text that it was given.
  std::vector<ObjectEvent> ToldRows(const SharedObject& existing) const {
    try {
      const std::string text = tools_.Texts.ObjectText(existing.Object, week_);
      return tools_.Texts.ReadObject(text, {week_, tools_.Today, eventTypes_, tools_.Untitled}).Events;
    } catch (const InvalidCalendarText&) {
      return {};
    }
  }

  /// Changes the rows that are there, and adds new ones.
  void ChangeRows(Entry& entry) {
    for (const ObjectEvent& row : entry.Rows) {
      const bool isNew = row.Event.EventID == 0;
      entry.IsNewRow.push_back(isNew);
      newRows_ += isNew ? 1 : 0;
      SaveEvent(database_, tools_.Regional, row.Event, owners_);
      if (!isNew && HasOtherDays(entry, row))
        ReplaceEventDays(database_, tools_.Regional, row.Event.EventID, row.Days);
    }
  }

  /// Deletes the rows that the client does not have any more. Not before others are tied to the object: it
  /// goes with its last event.
  void DeleteGoneRows(const Entry& entry) {
    if (entry.Change.Existing == nullptr) return;
    std::vector<std::string> gone;
    for (const ObjectEvent& row : entry.Change.Existing->Object.Events) {
      if (FindPlace(entry.Rows, row.Place) == nullptr) gone.push_back(std::to_string(row.Event.EventID));
    }
    if (!gone.empty()) DeleteEvents(database_, JoinList(gone), owners_);
  }

  static bool HasOtherDays(const Entry& entry, const ObjectEvent& row) {
    const ObjectEvent* stored = FindPlace(entry.Change.Existing->Object.Events, row.Place);
    return stored == nullptr || stored->Days != row.Days;
  }

  void NumberRows(const std::vector<int>& ids) {
    if (ids.size() != newRows_) throw DatabaseError("stored events are missing from Events");
    auto id = ids.begin();
    for (Entry& entry : entries_) {
      for (std::size_t i = 0; i < entry.Rows.size(); ++i) {
        if (entry.IsNewRow[i]) entry.Rows[i].Event.EventID = *id++;
      }
    }
  }

  void StoreObject(Entry& entry) {
    const ObjectChange& change = entry.Change;
    StoredObject stored{change.Existing == nullptr ? 0 : change.Existing->Object.Id,
                        change.Existing == nullptr ? change.Name : change.Existing->Object.Name,
                        change.Planned->Uid,
                        change.Planned->Text,
                        tools_.Secrets.Digest(TextOfRows(entry.Rows, week_, tools_.Texts.ZoneName())),
                        change.Planned->ListedUntil};
    entry.ObjectId = stored.Id;
    if (stored.Id != 0) return ChangeObject(database_, tools_.Regional, stored);
    AddObject(database_, tools_.Regional, stored);
    ++newObjects_;
  }

  void NumberObjects(const std::vector<int>& ids) {
    if (ids.size() != newObjects_) throw DatabaseError("stored objects are missing from CalendarObjects");
    auto id = ids.begin();
    for (Entry& entry : entries_) {
      if (entry.ObjectId == 0) entry.ObjectId = *id++;
    }
  }

  void Tie(const Entry& entry) {
    const bool wasTied = entry.Change.Existing != nullptr && entry.Change.Existing->Object.Id != 0;
    for (std::size_t i = 0; i < entry.Rows.size(); ++i) {
      const ObjectEvent& row = entry.Rows[i];
      if (entry.IsNewRow[i]) AddEventDays(database_, tools_.Regional, row.Event.EventID, row.Days);
      if (entry.IsNewRow[i] || !wasTied)
        AddObjectMember(database_, {entry.ObjectId, row.Event.EventID, row.Place});
    }
  }

  Connection& database_;
  const ExchangeTools& tools_;
  const std::vector<std::string> owners_;
  const Week week_;
  const std::vector<std::string> eventTypes_;
  std::vector<Entry> entries_;
  std::size_t newRows_ = 0;
  std::size_t newObjects_ = 0;
};

}  // namespace

void StoreObjects(Connection& database, const ExchangeTools& tools, const SharedCalendar& calendar,
                  std::span<const ObjectChange> changes) {
  if (changes.empty()) return;
  const bool hasExisting =
      std::ranges::any_of(changes, [](const ObjectChange& change) { return change.Existing != nullptr; });
  Batch batch(database, tools, calendar, hasExisting);
  for (const ObjectChange& change : changes) batch.Add(change);
  batch.Store();
}

}  // namespace orlune
