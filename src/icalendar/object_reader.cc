#include "icalendar/object_reader.h"

#include <algorithm>
#include <set>
#include <unordered_map>

#include "base/ascii.h"
#include "base/dates.h"
#include "base/text.h"
#include "icalendar/event_texts.h"
#include "icalendar/line_writer.h"
#include "icalendar/rows_planner.h"

namespace orlune {

namespace {

constexpr int kMonthsListed = 60;
constexpr std::size_t kMostUidCharacters = 255;
constexpr std::size_t kBudgetOfObject = 3'000'000;
constexpr std::size_t kBudgetOfFile = 100'000'000;
constexpr std::size_t kCostOfStoredDay = 500;  // against one that is looked at

[[noreturn]] void Refuse(TextFault fault, const std::string& sentence) {
  throw InvalidCalendarText(fault, sentence);
}

void AddLoss(std::vector<Loss>& losses, Loss loss) {
  if (std::ranges::find(losses, loss) == losses.end()) losses.push_back(loss);
}

void AddLosses(const Component& event, std::vector<Loss>& losses) {
  for (const Component& child : event.Children)
    AddLoss(losses, child.Is("VALARM") ? Loss::kAlarms : Loss::kOther);
  for (const ContentLine& line : event.Lines) {
    const auto is = [&line](std::string_view name) { return EqualsIgnoringAsciiCase(line.Name, name); };
    if (is("ATTENDEE") || is("ORGANIZER")) AddLoss(losses, Loss::kAttendees);
    if (is("LOCATION") && !line.Value.empty()) AddLoss(losses, Loss::kLocation);
    if (is("ATTACH") || is("URL") || is("CONFERENCE") || is("GEO") || is("RESOURCES"))
      AddLoss(losses, Loss::kOther);
  }
  if (IsCancelled(event)) AddLoss(losses, Loss::kOther);
  if (IsCut(event)) AddLoss(losses, Loss::kLongText);
}

/// The first category that is a type of events here, as it is spelled here.
std::string EventTypeOf(const Component& event, std::span<const std::string> types) {
  for (const std::string& category : CategoriesOf(event)) {
    const auto type = std::ranges::find_if(
        types, [&](const std::string& name) { return EqualIgnoringCase(name, category); });
    if (type != types.end()) return *type;
  }
  return "";
}

std::string UidOf(const Component& event) {
  std::string uid = UnescapedText(event.ValueOf("UID"));
  std::ranges::replace(uid, '\n', ' ');
  return std::string(TrimBlanks(uid));
}

void CheckUid(const std::string& uid) {
  const auto characters =
      std::ranges::count_if(uid, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; });
  if (characters > static_cast<std::ptrdiff_t>(kMostUidCharacters))
    Refuse(TextFault::kInvalidText, "The UID of an event is longer than 255 characters.");
}

/// A UID for an event without one: the same for the same event.
std::string MadeUid(const Component& event) {
  std::uint64_t hash = 14'695'981'039'346'656'037U;
  for (const ContentLine& line : event.Lines) {
    if (EqualsIgnoringAsciiCase(line.Name, "DTSTAMP")) continue;
    for (const char c : line.Text) hash = (hash ^ static_cast<unsigned char>(c)) * 1'099'511'628'211U;
  }
  return "no-uid-" + std::to_string(hash);
}

bool IsOtherComponent(const Component& component) {
  return component.Is("VTODO") || component.Is("VJOURNAL") || component.Is("VFREEBUSY") ||
         component.Is("VPOLL");
}

/// The names of the zones that an event's times are in.
void AddZoneNames(const Component& component, std::set<std::string_view>& names) {
  for (const ContentLine& line : component.Lines) {
    if (const auto name = ParameterOf(line, "TZID")) names.insert(*name);
  }
  for (const Component& child : component.Children) AddZoneNames(child, names);
}

/// One object of a file as a text of its own.
std::string TextOfEvents(const std::vector<const Component*>& events, std::string_view uid,
                         const std::unordered_map<std::string_view, const Component*>& definitions) {
  std::string text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Orlune//Orlune//EN\r\n";
  std::set<std::string_view> names;
  for (const Component* event : events) AddZoneNames(*event, names);
  for (const std::string_view name : names) {
    if (const auto found = definitions.find(name); found != definitions.end())
      AppendComponent(text, *found->second);
  }
  for (const Component* event : events) {
    AppendLine(text, "BEGIN:VEVENT");
    if (event->Find("UID") == nullptr) AppendLine(text, "UID:", EscapedText(uid));
    for (const ContentLine& line : event->Lines) AppendLine(text, line.Text);
    for (const Component& child : event->Children) AppendComponent(text, child);
    AppendLine(text, "END:VEVENT");
  }
  text += "END:VCALENDAR\r\n";
  return text;
}

std::size_t StoredDays(const std::vector<ObjectEvent>& rows) {
  std::size_t count = 0;
  for (const ObjectEvent& row : rows) count += row.Days.Listed.size() + row.Days.LeftOut.size();
  return count;
}

/// The events of a file by their UIDs, in its order.
struct FileObject {
  std::string Uid;
  std::vector<const Component*> Events;
};

class FileSorter {
 public:
  void Add(const Component& event) {
    std::string uid = UidOf(event);
    if (uid.empty()) uid = MadeUid(event);
    const auto [place, isNew] = places_.emplace(uid, Objects.size());
    if (isNew) Objects.push_back({std::move(uid), {}});
    Objects[place->second].Events.push_back(&event);
  }

  std::vector<FileObject> Objects;

 private:
  std::unordered_map<std::string, std::size_t> places_;
};

}  // namespace

PlannedObject ObjectReader::Plan(const std::vector<const Component*>& events, TextZones& zones,
                                 WorkBudget& budget) const {
  const ObjectParts parts = PartsOfObject(events, zones);
  const auto begins =
      parts.Master != nullptr ? EventTimes(*parts.Master, zones).Begin().Local.Day : settings_.Today;
  const Date listTo = AddMonths(std::max(settings_.Today, begins), kMonthsListed);
  PlannedRows planned = PlanRows(parts, zones, {settings_.Week, listTo}, budget);
  if (planned.Rows.empty()) Refuse(TextFault::kInvalidText, "The event has no day on which it occurs.");
  PlannedObject object;
  for (ObjectEvent& row : planned.Rows) {
    row.Event.EventType = EventTypeOf(*parts.EventAt(row.Place), settings_.EventTypes);
    if (row.Event.EventName.empty()) row.Event.EventName = settings_.Untitled;
    if (row.Event.Type == Repetition::kListed) AddLoss(object.Losses, Loss::kListedDays);
  }
  object.Events = std::move(planned.Rows);
  if (planned.ListsAhead) object.ListedUntil = planned.ListedTo;
  for (const Component* event : events) AddLosses(*event, object.Losses);
  if (zones.TakeUnknown()) AddLoss(object.Losses, Loss::kUnknownZone);
  return object;
}

PlannedObject ObjectReader::ReadObject(std::string_view text) const {
  if (text.size() > kMostObjectBytes) Refuse(TextFault::kInvalidText, "The event is larger than 1 MiB.");
  const std::string unfolded = Unfolded(text);
  const std::vector<Component> calendars = ReadComponents(unfolded);
  if (calendars.size() != 1 || !calendars.front().Is("VCALENDAR"))
    Refuse(TextFault::kInvalidText, "The text is not one calendar of iCalendar.");
  if (calendars.front().Find("METHOD") != nullptr)
    Refuse(TextFault::kNotOneObject, "An event of a calendar has no METHOD.");
  std::vector<const Component*> events;
  for (const Component& child : calendars.front().Children) {
    if (IsOtherComponent(child))
      Refuse(TextFault::kUnsupportedComponent, "Only events can be kept here, no tasks.");
    if (child.Is("VEVENT")) events.push_back(&child);
  }
  if (events.empty()) Refuse(TextFault::kNotOneObject, "The calendar has no event.");
  const std::string uid = UidOf(*events.front());
  if (uid.empty()) Refuse(TextFault::kNotOneObject, "The event has no UID.");
  CheckUid(uid);
  for (const Component* event : events) {
    if (UidOf(*event) != uid) Refuse(TextFault::kNotOneObject, "The events have different UIDs.");
  }
  TextZones zones(server_, calendars);
  WorkBudget budget(kBudgetOfObject);
  PlannedObject object = Plan(events, zones, budget);
  object.Uid = uid;
  object.Text = text;
  return object;
}

PlannedFile ObjectReader::ReadFile(std::string_view text) const {
  const std::string unfolded = Unfolded(text);
  const std::vector<Component> calendars = ReadComponents(unfolded);
  if (calendars.empty()) Refuse(TextFault::kInvalidText, "The file holds no calendar.");
  PlannedFile file;
  FileSorter sorter;
  std::unordered_map<std::string_view, const Component*> definitions;
  for (const Component& calendar : calendars) {
    if (!calendar.Is("VCALENDAR")) Refuse(TextFault::kInvalidText, "The file is not one of iCalendar.");
    for (const Component& child : calendar.Children) {
      if (child.Is("VTIMEZONE")) definitions.emplace(child.ValueOf("TZID"), &child);
      if (child.Is("VEVENT")) sorter.Add(child);
      if (IsOtherComponent(child))
        file.Refused.push_back({WholeTitle(child), "Only events can be kept here, no tasks."});
    }
  }
  TextZones zones(server_, calendars);
  WorkBudget left(kBudgetOfFile);
  for (const FileObject& object : sorter.Objects) {
    try {
      CheckUid(object.Uid);
      PlannedObject planned = Plan(object.Events, zones, left);
      left.Spend(kCostOfStoredDay * StoredDays(planned.Events));
      planned.Uid = object.Uid;
      planned.Text = TextOfEvents(object.Events, object.Uid, definitions);
      if (planned.Text.size() > kMostObjectBytes)
        Refuse(TextFault::kInvalidText, "The event is larger than 1 MiB.");
      file.Objects.push_back(std::move(planned));
    } catch (const InvalidCalendarText& fault) {
      zones.TakeUnknown();
      file.Refused.push_back({WholeTitle(*object.Events.front()), fault.what()});
    }
  }
  return file;
}

}  // namespace orlune
