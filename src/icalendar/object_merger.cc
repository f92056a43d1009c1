#include "icalendar/object_merger.h"

#include <algorithm>
#include <set>
#include <span>
#include <vector>

#include "base/ascii.h"
#include "base/text.h"
#include "exchange/row_text.h"
#include "icalendar/event_writer.h"
#include "icalendar/line_writer.h"
#include "icalendar/object_reader.h"
#include "icalendar/object_writer.h"
#include "icalendar/row_rule.h"
#include "icalendar/series_planner.h"

namespace orlune {

namespace {

constexpr std::size_t kBudget = 3'000'000;
const std::vector<std::string_view> kTimeProperties{"DTSTART", "DTEND",  "DURATION", "RRULE",
                                                    "RDATE",   "EXDATE", "EXRULE"};

/// What takes the place of some properties of an event.
struct Edit {
  std::vector<std::string_view> Replaced{};
  std::string Lines{};
  bool IsRemoved = false;

  void Replace(std::string_view name) { Replaced.push_back(name); }
  bool Replaces(std::string_view name) const {
    return std::ranges::any_of(Replaced,
                               [&](std::string_view one) { return EqualsIgnoringAsciiCase(one, name); });
  }
};

void AppendEdited(std::string& text, const Component& component, const Edit& edit) {
  AppendLine(text, "BEGIN:", component.Name);
  for (const ContentLine& line : component.Lines) {
    if (!edit.Replaces(line.Name)) AppendLine(text, line.Text);
  }
  text += edit.Lines;
  for (const Component& child : component.Children) AppendComponent(text, child);
  AppendLine(text, "END:", component.Name);
}

/// The rows of one event of the text, of all rows in the order of their places.
std::span<const ObjectEvent> RowsOfEvent(std::span<const ObjectEvent> rows, std::size_t number) {
  const auto first = static_cast<int>(number) * kPlacesOfEvent;
  const auto begin = std::ranges::lower_bound(rows, first, {}, &ObjectEvent::Place);
  const auto end = std::ranges::lower_bound(rows, first + kPlacesOfEvent, {}, &ObjectEvent::Place);
  return {begin, end};
}

bool SayTheSameDays(const ObjectEvent& a, const ObjectEvent& b, const Week& week) {
  return a.Place == b.Place && a.Event.BeginTime == b.Event.BeginTime &&
         EndTimeOf(a.Event) == EndTimeOf(b.Event) && DaysOf(a, week) == DaysOf(b, week);
}

bool SayTheSameDays(std::span<const ObjectEvent> a, std::span<const ObjectEvent> b, const Week& week) {
  return std::ranges::equal(a, b, [&](const ObjectEvent& one, const ObjectEvent& other) {
    return SayTheSameDays(one, other, week);
  });
}

std::string InOneForm(std::string_view comments) {
  return ReplaceAll(comments, "\r\n", "\n");
}

/// The first row of which `field` differs from the planned one; null when none does.
template <class Field>
const OL_Event* FindOther(std::span<const ObjectEvent> rows, const OL_Event& planned, Field field) {
  const auto found =
      std::ranges::find_if(rows, [&](const ObjectEvent& row) { return field(row.Event) != field(planned); });
  return found == rows.end() ? nullptr : &found->Event;
}

void EditText(Edit& edit, std::string_view name, std::string_view stored) {
  edit.Replace(name);
  if (!stored.empty()) AppendLine(edit.Lines, std::string(name) + ":", EscapedText(PlainText(stored)));
}

void EditState(Edit& edit, const Component& event, SuggestionState state) {
  const std::string_view status = event.ValueOf("STATUS");
  const bool isTentative = EqualsIgnoringAsciiCase(status, "TENTATIVE");
  if (state == SuggestionState::kUndecided && !isTentative) {
    edit.Replace("STATUS");
    AppendLine(edit.Lines, "STATUS:TENTATIVE");
  } else if (state == SuggestionState::kAccepted && isTentative) {
    edit.Replace("STATUS");
    AppendLine(edit.Lines, "STATUS:CONFIRMED");
  } else if (state == SuggestionState::kDeclined &&
             !EqualsIgnoringAsciiCase(event.ValueOf("TRANSP"), "TRANSPARENT")) {
    edit.Replace("TRANSP");
    AppendLine(edit.Lines, "TRANSP:TRANSPARENT");
  }
}

/// A category that the event has not becomes its first one.
void EditCategory(Edit& edit, const Component& event, std::string_view stored) {
  const std::string type = PlainText(stored);
  const std::vector<std::string> categories = CategoriesOf(event);
  const auto isType = [&](const std::string& category) { return EqualIgnoringCase(category, type); };
  if (type.empty() || std::ranges::any_of(categories, isType)) return;
  std::string value = EscapedText(type);
  for (const std::string& category : categories) value += "," + EscapedText(category);
  edit.Replace("CATEGORIES");
  AppendLine(edit.Lines, "CATEGORIES:", value);
}

void EditTexts(Edit& edit, const Component& event, const OL_Event& planned,
               std::span<const ObjectEvent> rows) {
  const auto title = [](const OL_Event& one) { return PlainText(one.EventName); };
  const auto comments = [](const OL_Event& one) { return InOneForm(PlainText(one.Comments)); };
  const auto isPrivate = [](const OL_Event& one) { return one.Private; };
  if (const OL_Event* row = FindOther(rows, planned, title)) EditText(edit, "SUMMARY", row->EventName);
  if (const OL_Event* row = FindOther(rows, planned, comments)) EditText(edit, "DESCRIPTION", row->Comments);
  if (const OL_Event* row = FindOther(rows, planned, isPrivate)) {
    edit.Replace("CLASS");
    AppendLine(edit.Lines, "CLASS:", row->Private ? "PRIVATE" : "PUBLIC");
  }
  EditCategory(edit, event, rows.front().Event.EventType);
  EditState(edit, event, rows.front().Event.SuggestState);
}

/// One object whose text is merged with its rows.
class Merge {
 public:
  Merge(const CalendarObject& object, const Week& week, const NamedZone& zone)
      : object_(object),
        week_(week),
        zone_(zone),
        writer_(zone),
        text_(Unfolded(object.KeptText)),
        calendars_(ReadComponents(text_)),
        zones_(zone, calendars_),
        parts_(PartsOfObject(EventsOf(calendars_), zones_)),
        planned_(PlannedRowsNow()),
        edits_(parts_.Overrides.size() + 1) {}

  std::string Run() {
    for (std::size_t number = 1; number < edits_.size(); ++number) EditEvent(number);
    EditMaster();
    return Write();
  }

 private:
  const Component& EventOf(std::size_t number) const {
    return number == 0 ? *parts_.Master : *parts_.Overrides[number - 1];
  }

  /// The rows that the text says, its listed days as far as those of the rows that there are.
  std::vector<ObjectEvent> PlannedRowsNow() {
    Date last{};
    for (const ObjectEvent& row : object_.Events) {
      const bool isListed = row.Event.Type == Repetition::kListed;
      const bool isOnlyListedDay = row.Event.Type == Repetition::kNone && row.Place < kPlacesOfEvent;
      if (isListed) last = std::max(last, row.Event.EndDate);
      if (isOnlyListedDay) last = std::max(last, row.Event.BeginDate);
    }
    WorkBudget budget(kBudget);
    return PlanRows(parts_, zones_, {week_, last + kZoneMargin}, budget).Rows;
  }

  void EditEvent(std::size_t number) {
    const auto planned = RowsOfEvent(planned_, number);
    const auto rows = RowsOfEvent(object_.Events, number);
    Edit& edit = edits_[number];
    if (rows.empty()) {
      // A cancelled day has never had a row; another one has been deleted.
      edit.IsRemoved = !planned.empty();
      return;
    }
    if (!planned.empty()) EditTexts(edit, EventOf(number), planned.front().Event, rows);
    if (SayTheSameDays(planned, rows, week_)) return;
    ReplaceTimes(edit, rows, {});
  }

  void EditMaster() {
    if (parts_.Master == nullptr) return;
    EditEvent(0);
    Edit& edit = edits_.front();
    const auto rows = RowsOfEvent(object_.Events, 0);
    if (edit.IsRemoved) return;
    if (edit.Replaces("DTSTART")) {
      edit.Replaced.clear();
      edit.Lines.clear();
      const auto planned = RowsOfEvent(planned_, 0);
      if (!planned.empty()) EditTexts(edit, *parts_.Master, planned.front().Event, rows);
      ReplaceTimes(edit, rows, ChangedDays());
      for (std::size_t i = 0; i < parts_.Overrides.size(); ++i) ReplaceRecurrenceId(i, rows.front());
    } else {
      for (std::size_t i = 0; i < parts_.Overrides.size(); ++i) {
        if (edits_[i + 1].IsRemoved) LeaveOut(edit, *parts_.Overrides[i]);
      }
    }
  }

  /// The days of the series that events which stay in the text change.
  std::set<Date> ChangedDays() const {
    std::set<Date> changed;
    for (std::size_t i = 0; i < parts_.Overrides.size(); ++i) {
      if (!edits_[i + 1].IsRemoved) changed.insert(DayOf(*parts_.OverrideTimes[i].RecurrenceId()));
    }
    return changed;
  }

  Date DayOf(const TextTime& time) const {
    return time.IsDate ? time.Local.Day : zone_.Offsets.Local(time.Moment).Day;
  }

  void ReplaceTimes(Edit& edit, std::span<const ObjectEvent> rows, const std::set<Date>& changed) {
    edit.Replaced.insert(edit.Replaced.end(), kTimeProperties.begin(), kTimeProperties.end());
    usesServerZone_ = true;
    if (rows.size() > 1) return writer_.AppendListedTimes(edit.Lines, rows, week_);
    auto rule = RuleOf(rows.front(), week_);
    if (!rule) {
      edit.IsRemoved = true;
      return;
    }
    std::erase_if(rule->LeftOut, [&](Date day) { return changed.contains(day); });
    writer_.AppendTimes(edit.Lines, rows.front().Event, *rule);
  }

  /// Names the changed occurrence by the time at which the series is now.
  void ReplaceRecurrenceId(std::size_t index, const ObjectEvent& series) {
    Edit& edit = edits_[index + 1];
    edit.Replace("RECURRENCE-ID");
    writer_.AppendBegin(edit.Lines, "RECURRENCE-ID", series.Event,
                        DayOf(*parts_.OverrideTimes[index].RecurrenceId()));
  }

  static void LeaveOut(Edit& edit, const Component& removed) {
    const ContentLine& id = *removed.Find("RECURRENCE-ID");
    std::string line = "EXDATE";
    if (const auto zone = ParameterOf(id, "TZID")) line += ";TZID=\"" + std::string(*zone) + "\"";
    if (ReadCivilValue(id.Value).IsDate) line += ";VALUE=DATE";
    AppendLine(edit.Lines, line + ":" + std::string(id.Value));
  }

  std::string Write() const {
    std::string text;
    text.reserve(text_.size() + zone_.Definition.size());
    bool hasEvents = false;
    for (const Component& calendar : calendars_) {
      AppendLine(text, "BEGIN:", calendar.Name);
      for (const ContentLine& line : calendar.Lines) AppendLine(text, line.Text);
      if (usesServerZone_ && !HasServerZone(calendar)) text += zone_.Definition;
      for (const Component& child : calendar.Children) hasEvents |= AppendChild(text, child);
      AppendLine(text, "END:", calendar.Name);
    }
    return hasEvents ? text : "";
  }

  bool HasServerZone(const Component& calendar) const {
    return std::ranges::any_of(calendar.Children, [this](const Component& child) {
      return child.Is("VTIMEZONE") && child.ValueOf("TZID") == zone_.Name;
    });
  }

  /// Whether it is an event.
  bool AppendChild(std::string& text, const Component& child) const {
    for (std::size_t number = parts_.Master == nullptr ? 1 : 0; number < edits_.size(); ++number) {
      if (&EventOf(number) != &child) continue;
      if (edits_[number].IsRemoved) return false;
      AppendEdited(text, child, edits_[number]);
      return true;
    }
    // Of several events for one occurrence only the last counts.
    if (!child.Is("VEVENT")) AppendComponent(text, child);
    return false;
  }

  const CalendarObject& object_;
  const Week& week_;
  const NamedZone& zone_;
  const EventWriter writer_;
  const std::string text_;
  const std::vector<Component> calendars_;
  TextZones zones_;
  const ObjectParts parts_;
  const std::vector<ObjectEvent> planned_;
  std::vector<Edit> edits_;  ///< of the master, then of the overrides
  bool usesServerZone_ = false;
};

}  // namespace

std::string ObjectMerger::Merged(const CalendarObject& object, const Week& week) const {
  try {
    return Merge(object, week, zone_).Run();
  } catch (const InvalidCalendarText&) {
    return ObjectWriter(zone_).CalendarOf(object, week);
  }
}

}  // namespace orlune
