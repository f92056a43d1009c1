#include "icalendar/object_reader.h"

#include <algorithm>
#include <set>
#include <unordered_map>

#include "base/ascii.h"
#include "base/dates.h"
#include "base/text.h"
#include "icalendar/line_writer.h"
#include "icalendar/series_planner.h"

namespace orlune {

using std::chrono::days;

namespace {

constexpr int kMonthsToFindKind = 120;
constexpr int kMonthsListed = 60;
constexpr std::size_t kMostTitleCharacters = 255;
constexpr std::size_t kMostCommentBytes = std::size_t{64} << 10U;
constexpr std::size_t kMostUidCharacters = 255;
constexpr std::size_t kBudgetOfObject = 3'000'000;
constexpr std::size_t kBudgetOfFile = 100'000'000;
constexpr std::size_t kCostOfStoredDay = 500;  // against one that is looked at

[[noreturn]] void Refuse(TextFault fault, const std::string& sentence) {
  throw InvalidCalendarText(fault, sentence);
}

bool IsContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

/// The first characters of which a row has room for so many; quotes take more of it.
std::string CutTitle(const std::string& title) {
  std::size_t characters = 0;
  for (std::size_t i = 0; i < title.size(); ++i) {
    if (!IsContinuation(title[i])) characters += title[i] == '\'' ? 5 : (title[i] == '"' ? 6 : 1);
    if (characters > kMostTitleCharacters) return title.substr(0, i);
  }
  return title;
}

std::string CutComments(std::string comments) {
  if (comments.size() <= kMostCommentBytes) return comments;
  std::size_t end = kMostCommentBytes;
  while (IsContinuation(comments[end])) --end;
  comments.resize(end);
  return comments;
}

std::string WholeTitle(const Component& event) {
  std::string title = UnescapedText(event.ValueOf("SUMMARY"));
  std::ranges::replace(title, '\n', ' ');
  std::ranges::replace(title, '\t', ' ');
  return std::string(TrimBlanks(title));
}

std::string WholeComments(const Component& event) {
  return ReplaceAll(UnescapedText(event.ValueOf("DESCRIPTION")), "\n", "\r\n");
}

bool IsCancelled(const Component& event) {
  return EqualsIgnoringAsciiCase(event.ValueOf("STATUS"), "CANCELLED");
}

/// Makes the rows of one object.
class RowsPlanner {
 public:
  RowsPlanner(const ObjectParts& parts, TextZones& zones, const PlanSettings& settings, WorkBudget& budget)
      : parts_(parts), zones_(zones), settings_(settings), budget_(budget) {}

  PlannedRows Plan() {
    if (parts_.Master != nullptr) PlanMaster();
    for (std::size_t i = 0; i < parts_.Overrides.size(); ++i) {
      const EventTimes& times = parts_.OverrideTimes[i];
      if (IsCancelled(*parts_.Overrides[i]) || plansFuture_.contains(i)) continue;
      Series once{&times, {{times.Begin()}}, false, false, true, times.Begin().Local.Day};
      AddRows(PlanSeries(once, {}, zones_.Server(), settings_.Week), *parts_.Overrides[i], i + 1);
    }
    std::ranges::sort(planned_.Rows, {}, &ObjectEvent::Place);
    return std::move(planned_);
  }

 private:
  void PlanMaster() {
    const EventTimes times(*parts_.Master, zones_);
    if (!times.Repeats() && parts_.Overrides.empty() && !times.LastLeftOut()) {
      Series once{&times, {{times.Begin()}}, false, false, true, times.Begin().Local.Day};
      return AddRows(PlanSeries(once, {}, zones_.Server(), settings_.Week), *parts_.Master, 0);
    }
    const Date certain = CertainTo(times);
    const std::size_t rowsBefore = planned_.Rows.size();
    PlanTo(times, certain, certain);
    if (!planned_.ListsAhead) return;
    planned_.ListedTo = std::max(certain, settings_.ListTo);
    planned_.Rows.resize(rowsBefore);
    PlanTo(times, planned_.ListedTo, certain);
  }

  /// The day to which an endless series is worked out to find its kind: ten years, and all exceptions.
  Date CertainTo(const EventTimes& times) const {
    if (!times.IsEndless()) return kLastDayOfText;
    Date certain = AddMonths(times.Begin().Local.Day, kMonthsToFindKind);
    if (const auto last = times.LastLeftOut()) certain = std::max(certain, *last + days{3});
    for (const EventTimes& changed : parts_.OverrideTimes)
      certain = std::max(certain, changed.RecurrenceId()->Local.Day + days{3});
    return std::min(certain, kLastDayOfText);
  }

  void PlanTo(const EventTimes& times, Date last, Date certain) {
    EventTimes::Instances instances = times.Expand(last, budget_);
    Series series{&times,          std::move(instances.All), times.Repeats(),
                  times.HasRule(), instances.IsComplete,     last,
                  times.Until()};
    if (!series.IsComplete) CheckIncomplete(times, series);
    for (std::size_t i = parts_.Overrides.size(); i-- > 0;) Except(series, i, certain);
    AddRows(PlanSeries(series, certain, zones_.Server(), settings_.Week), *parts_.Master, 0);
  }

  /// A series that is longer than is worked out is either endless or known by its kind.
  void CheckIncomplete(const EventTimes& times, Series& series) const {
    if (series.Instances.size() > kMostDaysOfObject) {
      if (!times.IsEndless() && !series.EndsOn)
        Refuse(TextFault::kTooManyDays, "The event has more than 20,000 days.");
      series.KnownTo = series.Instances.back().Begin.Local.Day - days{1};
    } else if (times.IsEndless() && series.Instances.size() == 1 && HasNoOther(times)) {
      series.IsComplete = true;
    }
  }

  bool HasNoOther(const EventTimes& times) const {
    return times.Expand(kLastDayOfText, budget_).All.size() == 1;
  }

  /// Leaves out the occurrence that an event changes, or takes it and all later ones out of the series to a
  /// series of their own.
  void Except(Series& series, std::size_t index, Date certain) {
    const EventTimes& changed = parts_.OverrideTimes[index];
    const TextTime& id = *changed.RecurrenceId();
    if (changed.IsThisAndFuture()) return SplitOff(series, index, certain);
    const auto moment = [](const Instance& instance) { return instance.Begin.Moment; };
    auto instance = std::ranges::lower_bound(series.Instances, id.Moment - days{2}, {}, moment);
    for (; instance != series.Instances.end() && moment(*instance) < id.Moment + days{2}; ++instance) {
      if (Is(*instance, id)) instance->IsLeftOut = true;
    }
  }

  static bool Is(const Instance& instance, const TextTime& id) {
    if (instance.Begin.IsDate || id.IsDate) return instance.Begin.Local.Day == id.Local.Day;
    return instance.Begin.Moment == id.Moment;
  }

  void SplitOff(Series& series, std::size_t index, Date certain) {
    const EventTimes& changed = parts_.OverrideTimes[index];
    const TextTime& id = *changed.RecurrenceId();
    const auto split = std::ranges::find_if(series.Instances, [&](const Instance& instance) {
      return Is(instance, id) || instance.Begin.Moment > id.Moment;
    });
    Series future{&changed, {}, true, series.HasRule, series.IsComplete, series.KnownTo, std::nullopt};
    if (!series.IsComplete && series.EndsOn) future.EndsOn = series.EndsOn;
    for (auto instance = split; instance != series.Instances.end(); ++instance) {
      Instance moved = *instance;
      moved.Begin = changed.MovedLike(instance->Begin);
      future.Instances.push_back(moved);
    }
    series.Instances.erase(split, series.Instances.end());
    series.IsComplete = true;
    series.EndsOn.reset();
    if (future.Instances.empty()) return;
    plansFuture_.insert(index);
    if (IsCancelled(*parts_.Overrides[index])) return;
    AddRows(PlanSeries(future, certain, zones_.Server(), settings_.Week), *parts_.Overrides[index],
            index + 1);
  }

  void AddRows(SeriesRows rows, const Component& event, std::size_t number) {
    planned_.ListsAhead |= rows.ListsAhead;
    const std::string title = TitleOf(event);
    const std::string comments = CommentsOf(event);
    const bool isPrivate = IsPrivate(event);
    for (ObjectEvent& row : rows.Rows) {
      row.Place += kPlacesOfEvent * static_cast<int>(number);
      row.Event.EventName = title;
      row.Event.Comments = comments;
      row.Event.Private = isPrivate;
      planned_.Rows.push_back(std::move(row));
    }
  }

  const ObjectParts& parts_;
  TextZones& zones_;
  const PlanSettings& settings_;
  WorkBudget& budget_;
  PlannedRows planned_;
  std::set<std::size_t> plansFuture_;  ///< overrides that have been planned as a series
};

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
  if (TitleOf(event) != WholeTitle(event) || CommentsOf(event) != WholeComments(event))
    AddLoss(losses, Loss::kLongText);
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
  const auto characters = std::ranges::count_if(uid, [](char c) { return !IsContinuation(c); });
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

std::string TitleOf(const Component& event) {
  return CutTitle(WholeTitle(event));
}

std::string CommentsOf(const Component& event) {
  return CutComments(WholeComments(event));
}

std::vector<std::string> CategoriesOf(const Component& event) {
  std::vector<std::string> categories;
  for (const ContentLine& line : event.Lines) {
    if (!EqualsIgnoringAsciiCase(line.Name, "CATEGORIES")) continue;
    for (const std::string_view item : ValueItems(line.Value))
      categories.emplace_back(TrimBlanks(UnescapedText(item)));
  }
  return categories;
}

bool IsPrivate(const Component& event) {
  const std::string_view access = event.ValueOf("CLASS");
  return EqualsIgnoringAsciiCase(access, "PRIVATE") || EqualsIgnoringAsciiCase(access, "CONFIDENTIAL");
}

PlannedRows PlanRows(const ObjectParts& parts, TextZones& zones, const PlanSettings& settings,
                     WorkBudget& budget) {
  return RowsPlanner(parts, zones, settings, budget).Plan();
}

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
