#include "exchange/file_import.h"

#include <unordered_map>

#include "exchange/object_batch.h"
#include "store/transaction.h"

namespace orlune {
namespace {

constexpr std::size_t kNameDigits = 32;

std::unordered_map<std::string, SharedObject> ObjectsByUid(Connection& database, const ExchangeTools& tools,
                                                           const SharedCalendar& calendar) {
  std::unordered_map<std::string, SharedObject> objects;
  for (SharedObject& object : LoadObjects(database, tools, calendar)) {
    std::string uid = object.Object.Uid;
    objects.emplace(std::move(uid), std::move(object));
  }
  return objects;
}

ImportStep StepFor(const PlannedObject& planned, const SharedObject* existing) {
  if (existing == nullptr) return ImportStep::kAdd;
  const CalendarObject& object = existing->Object;
  return object.IsAsKept && object.KeptText == planned.Text ? ImportStep::kNothing : ImportStep::kChange;
}

const SharedObject* Find(const std::unordered_map<std::string, SharedObject>& objects,
                         const std::string& uid) {
  const auto found = objects.find(uid);
  return found == objects.end() ? nullptr : &found->second;
}

}  // namespace

ImportPlan PlanImport(Connection& database, const ExchangeTools& tools, const SharedCalendar& calendar,
                      std::string_view text) {
  const Week week = WeekOf(database, calendar);
  const std::vector<std::string> eventTypes = KnownEventTypes(database);
  PlannedFile file = tools.Texts.ReadFile(text, {week, tools.Today, eventTypes, tools.Untitled});
  const auto existing = ObjectsByUid(database, tools, calendar);
  ImportPlan plan{{}, std::move(file.Refused)};
  for (PlannedObject& planned : file.Objects) {
    const ImportStep step = StepFor(planned, Find(existing, planned.Uid));
    plan.Objects.push_back({std::move(planned), step});
  }
  return plan;
}

void RunImport(Connection& database, const ExchangeTools& tools, const SharedCalendar& calendar,
               const ImportPlan& plan) {
  if (!calendar.MayChange) return;
  Transaction transaction(database);
  const auto existing = ObjectsByUid(database, tools, calendar);
  std::vector<ObjectChange> changes;
  for (const ImportedObject& object : plan.Objects) {
    const PlannedObject& planned = object.Planned;
    const SharedObject* before = Find(existing, planned.Uid);
    if (StepFor(planned, before) == ImportStep::kNothing) continue;
    changes.push_back({before, tools.Secrets.Digest(planned.Uid).substr(0, kNameDigits) + ".ics", &planned});
  }
  StoreObjects(database, tools, calendar, changes);
  transaction.Commit();
}

}  // namespace orlune
