#include "icalendar/calendar_queries.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/ascii.h"
#include "icalendar/content_lines.h"
#include "icalendar/line_writer.h"
#include "icalendar/object_reader.h"
#include "icalendar/object_writer.h"

namespace orlune {

using std::chrono::days;
using std::chrono::sys_seconds;

namespace {

constexpr std::size_t kBudget = 3'000'000;
void AppendUtc(std::string& text, std::string_view name, const TextTime& time) {
  if (time.IsDate) {
    AppendLine(text, std::string(name) + ";VALUE=DATE:", DateText(time.Local.Day));
  } else {
    AppendLine(text, std::string(name) + ":", UtcText(time.Moment));
  }
}

/// Writes occurrences one by one.
class Expander {
 public:
  Expander(TextZones& zones, const UtcPeriod& period) : zones_(zones), period_(period) {}

  std::string Expand(const std::vector<const Component*>& events) {
    const ObjectParts parts = PartsOfObject(events, zones_);
    if (parts.Master != nullptr) AppendMaster(parts);
    for (std::size_t i = 0; i < parts.Overrides.size(); ++i) {
      const EventTimes& times = parts.OverrideTimes[i];
      Append(*parts.Overrides[i], times, {times.Begin()}, &*times.RecurrenceId());
    }
    return std::move(text_);
  }

 private:
  void AppendMaster(const ObjectParts& parts) {
    const EventTimes times(*parts.Master, zones_);
    if (!times.Repeats()) return Append(*parts.Master, times, {times.Begin()}, nullptr);
    WorkBudget budget(kBudget);
    for (const Instance& instance : times.Expand(LastDay(parts), budget).All) {
      if (instance.IsLeftOut || IsChanged(instance, parts)) continue;
      const std::optional<std::size_t> changed = FindRange(instance, parts);
      if (!changed) {
        Append(*parts.Master, times, instance, &instance.Begin);
      } else {
        const EventTimes& future = parts.OverrideTimes[*changed];
        Append(*parts.Overrides[*changed], future, {future.MovedLike(instance.Begin), instance.Length},
               &instance.Begin);
      }
    }
  }

  /// The last day on which an occurrence may begin that is within the period, perhaps moved.
  Date LastDay(const ObjectParts& parts) const {
    if (!period_.End) return kLastDayOfText;
    std::chrono::seconds moved = days{2};
    for (const EventTimes& times : parts.OverrideTimes)
      moved = std::max(moved, days{2} + times.RecurrenceId()->Moment - times.Begin().Moment);
    return std::min(std::chrono::ceil<days>(*period_.End + moved), kLastDayOfText);
  }

  /// The event that changes this occurrence together with earlier ones.
  static std::optional<std::size_t> FindRange(const Instance& instance, const ObjectParts& parts) {
    std::optional<std::size_t> found;
    for (std::size_t i = 0; i < parts.OverrideTimes.size(); ++i) {
      const EventTimes& times = parts.OverrideTimes[i];
      if (times.RecurrenceId()->Moment > instance.Begin.Moment) break;
      if (times.IsThisAndFuture()) found = i;
    }
    return found;
  }

  static bool IsChanged(const Instance& instance, const ObjectParts& parts) {
    const auto moment = [](const EventTimes& times) { return times.RecurrenceId()->Moment; };
    const auto found = std::ranges::lower_bound(parts.OverrideTimes, instance.Begin.Moment, {}, moment);
    return found != parts.OverrideTimes.end() && moment(*found) == instance.Begin.Moment;
  }

  sys_seconds MomentOf(const TextTime& time) const {
    return time.IsDate ? zones_.Server().Moment(time.Local) : time.Moment;
  }

  void Append(const Component& event, const EventTimes& times, const Instance& instance, const TextTime* id) {
    const std::optional<TextTime> end = times.EndOf(instance);
    const sys_seconds begins = MomentOf(instance.Begin);
    const sys_seconds ends = end ? MomentOf(*end) : begins;
    if (period_.End && begins >= *period_.End) return;
    if (end ? ends <= period_.Begin : begins < period_.Begin) return;
    text_ += "BEGIN:VEVENT\r\n";
    if (id != nullptr) AppendUtc(text_, "RECURRENCE-ID", *id);
    AppendUtc(text_, "DTSTART", instance.Begin);
    if (end) AppendUtc(text_, "DTEND", *end);
    for (const ContentLine& line : event.Lines) {
      if (!IsTimeProperty(line.Name)) AppendLine(text_, line.Text);
    }
    for (const Component& child : event.Children) AppendComponent(text_, child);
    text_ += "END:VEVENT\r\n";
  }

  TextZones& zones_;
  const UtcPeriod period_;
  std::string text_;
};

bool Contains(const std::string& value, const std::string& text, bool heedsCase) {
  if (heedsCase) return value.find(text) != std::string::npos;
  const auto isSame = [](char a, char b) { return ToLowerAscii(a) == ToLowerAscii(b); };
  return std::search(value.begin(), value.end(), text.begin(), text.end(), isSame) != value.end() ||
         text.empty();
}

bool Holds(const PropertyFilter& filter, const Component& event) {
  bool isDefined = false;
  bool isFound = false;
  for (const ContentLine& line : event.Lines) {
    if (!EqualsIgnoringAsciiCase(line.Name, filter.Name)) continue;
    isDefined = true;
    if (!filter.Text) continue;
    isFound |= Contains(UnescapedText(line.Value), *filter.Text, filter.HeedsCase);
  }
  if (filter.IsNotDefined) return !isDefined;
  if (!filter.Text) return isDefined;
  return isDefined && isFound != filter.IsNegated;
}

}  // namespace

std::string ExpandedText(std::string_view text, const UtcPeriod& period, const NamedZone& server) {
  const std::string unfolded = Unfolded(text);
  const std::vector<Component> calendars = ReadComponents(unfolded);
  TextZones zones(server, calendars);
  return std::string(kCalendarBegin) + Expander(zones, period).Expand(EventsOf(calendars)) +
         std::string(kCalendarEnd);
}

bool HasProperties(std::string_view text, std::span<const PropertyFilter> filters) {
  const std::string unfolded = Unfolded(text);
  const std::vector<Component> calendars = ReadComponents(unfolded);
  return std::ranges::any_of(EventsOf(calendars), [&](const Component* event) {
    return std::ranges::all_of(filters, [&](const PropertyFilter& filter) { return Holds(filter, *event); });
  });
}

std::string FreeBusyCalendar(const UtcPeriod& period, std::span<const BusyPeriod> busy) {
  std::string text(kCalendarBegin);
  text += "BEGIN:VFREEBUSY\r\nDTSTAMP:19700101T000000Z\r\n";
  AppendLine(text, "UID:", "freebusy-" + UtcText(period.Begin));
  AppendLine(text, "DTSTART:", UtcText(period.Begin));
  if (period.End) AppendLine(text, "DTEND:", UtcText(*period.End));
  for (const bool isTentative : {false, true}) {
    std::vector<BusyPeriod> joined;
    for (BusyPeriod one : busy) {
      one.Begin = std::max(one.Begin, period.Begin);
      if (period.End) one.End = std::min(one.End, *period.End);
      if (one.IsTransparent || one.IsTentative != isTentative || one.End <= one.Begin) continue;
      if (!joined.empty() && one.Begin <= joined.back().End) {
        joined.back().End = std::max(joined.back().End, one.End);
      } else {
        joined.push_back(one);
      }
    }
    for (const BusyPeriod& one : joined)
      AppendLine(text, isTentative ? "FREEBUSY;FBTYPE=BUSY-TENTATIVE:" : "FREEBUSY;FBTYPE=BUSY:",
                 UtcText(one.Begin) + "/" + UtcText(one.End));
  }
  text += "END:VFREEBUSY\r\n";
  return text + std::string(kCalendarEnd);
}

}  // namespace orlune
