#include "icalendar/event_times.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>
#include <utility>

#include "base/ascii.h"
#include "exchange/calendar_text.h"

namespace orlune {

using std::chrono::days;
using std::chrono::seconds;
using std::chrono::sys_seconds;

namespace {

constexpr std::size_t kZoneBudget = 2'000'000;
constexpr seconds kDay = days{1};

[[noreturn]] void RefuseDays() {
  throw InvalidCalendarText(TextFault::kTooManyDays, "The event has more than 20,000 days.");
}

/// "Europe/Helsinki" of "/example.org/20260101/Europe/Helsinki".
std::string_view LastTwoParts(std::string_view id) {
  const std::size_t last = id.rfind('/');
  if (last == std::string_view::npos || last == 0) return id;
  const std::size_t before = id.rfind('/', last - 1);
  return before == std::string_view::npos ? id : id.substr(before + 1);
}

}  // namespace

TextZones::TextZones(const NamedZone& server, const std::vector<Component>& calendars)
    : server_(server), budget_(kZoneBudget) {
  for (const Component& calendar : calendars) {
    for (const Component& child : calendar.Children) {
      if (child.Is("VTIMEZONE")) definitions_.emplace(child.ValueOf("TZID"), &child);
    }
  }
}

const Zone& TextZones::Find(std::string_view id) {
  if (id == server_.Name) return Server();
  auto found = found_.find(id);
  if (found == found_.end()) found = found_.emplace(id, FindAnew(id)).first;
  if (found->second != nullptr) return *found->second;
  hasUnknown_ = true;
  return Server();
}

bool TextZones::TakeUnknown() {
  return std::exchange(hasUnknown_, false);
}

const Zone* TextZones::FindAnew(std::string_view id) {
  const auto named = [&](std::string_view name) -> const Zone* {
    if (name == server_.Name) return &Server();
    auto zone = FindNamedZone(name);
    if (!zone) return nullptr;
    named_.push_back(std::move(zone));
    return &named_.back()->Offsets;
  };
  if (const Zone* zone = named(id); zone != nullptr) return zone;
  if (const Zone* zone = FindDefined(id); zone != nullptr) return zone;
  return named(LastTwoParts(id));
}

const Zone* TextZones::FindDefined(std::string_view id) {
  const auto definition = definitions_.find(id);
  if (definition == definitions_.end()) return nullptr;
  try {
    own_.push_back(std::make_unique<const Zone>(*definition->second, budget_));
    return own_.back().get();
  } catch (const InvalidCalendarText&) {
    return nullptr;
  }
}

EventTimes::EventTimes(const Component& event, TextZones& zones) {
  const ContentLine* begin = event.Find("DTSTART");
  if (begin == nullptr) throw InvalidCalendarText(TextFault::kInvalidText, "An event has no DTSTART.");
  begin_ = ReadTime(*begin, begin->Value, zones);
  ReadLength(event, zones);
  for (const ContentLine& line : event.Lines) {
    const auto is = [&line](std::string_view name) { return EqualsIgnoringAsciiCase(line.Name, name); };
    if (is("RRULE")) {
      ReadRule(line.Value, rules_);
    } else if (is("EXRULE")) {
      ReadRule(line.Value, exceptionRules_);
    } else if (is("RDATE")) {
      ReadAdded(line, zones);
    } else if (is("EXDATE")) {
      for (const std::string_view item : ValueItems(line.Value)) {
        if (!item.empty()) leftOut_.push_back(ReadTime(line, item, zones));
      }
      if (leftOut_.size() > kMostDaysOfObject) RefuseDays();
    } else if (is("RECURRENCE-ID")) {
      recurrenceId_ = ReadTime(line, line.Value, zones);
      isThisAndFuture_ = EqualsIgnoringAsciiCase(ParameterOf(line, "RANGE").value_or(""), "THISANDFUTURE");
    }
  }
}

TextTime EventTimes::ReadTime(const ContentLine& line, std::string_view value, TextZones& zones) const {
  const CivilValue civil = ReadCivilValue(value);
  TextTime time{civil.Time, civil.IsDate, nullptr, sys_seconds{civil.Time.Day}};
  if (civil.IsDate) return time;
  const auto id = ParameterOf(line, "TZID");
  time.In = civil.IsUtc ? &zones.Utc() : (id ? &zones.Find(*id) : &zones.Server());
  time.Moment = time.In->Moment(time.Local);
  return time;
}

void EventTimes::ReadLength(const Component& event, TextZones& zones) {
  if (begin_.IsDate) length_.ByClock = kDay;
  if (const ContentLine* line = event.Find("DTEND"); line != nullptr) {
    const TextTime end = ReadTime(*line, line->Value, zones);
    if (begin_.IsDate) {
      length_.ByClock = std::max<seconds>(end.Local.Day - begin_.Local.Day, kDay);
    } else if (end.IsDate || end.In == begin_.In) {
      // By the clock: a night shift ends at its hour, also when the clocks change.
      length_.ByClock = Between(begin_.Local, end.Local);
    } else {
      length_.Exact = end.Moment - begin_.Moment;
    }
  } else if (const ContentLine* duration = event.Find("DURATION"); duration != nullptr) {
    const NominalDuration nominal = ReadDuration(duration->Value);
    length_ = {nominal.Days, nominal.Seconds};
    if (begin_.IsDate)
      length_ = {std::max(kDay, seconds{std::chrono::ceil<days>(nominal.Days + nominal.Seconds)}), {}};
  }
  if (length_.ByClock + length_.Exact > days{kMostDaysOfObject}) RefuseDays();
}

void EventTimes::ReadRule(std::string_view text, std::vector<Recurrence>& rules) const {
  if (rules.size() == 10)
    throw InvalidCalendarText(TextFault::kTooManyDays, "An event has more than ten rules.");
  Recurrence rule(text);
  if (rule.HasUntil() && rule.IsUntilUtc() && !begin_.IsDate) {
    const DateTime& until = rule.Until();
    rule.SetUntil(begin_.In->Local(sys_seconds{until.Day} + until.Time));
  }
  rules.push_back(std::move(rule));
}

void EventTimes::ReadAdded(const ContentLine& line, TextZones& zones) {
  for (const std::string_view item : ValueItems(line.Value)) {
    if (item.empty()) continue;
    const std::size_t slash = item.find('/');
    Instance instance{ReadTime(line, item.substr(0, slash), zones)};
    if (slash != std::string_view::npos) {
      const std::string_view end = item.substr(slash + 1);
      if (end.starts_with('P')) {
        const NominalDuration length = ReadDuration(end);
        instance.Length = EventLength{length.Days, length.Seconds};
      } else {
        instance.Length = EventLength{{}, ReadTime(line, end, zones).Moment - instance.Begin.Moment};
      }
      if (instance.Length->ByClock + instance.Length->Exact > days{kMostDaysOfObject}) RefuseDays();
    }
    // A date among times, or the other way round, has the form of the beginning.
    if (begin_.IsDate != instance.Begin.IsDate)
      instance.Begin = AtLocal({instance.Begin.Local.Day, begin_.Local.Time});
    added_.push_back(instance);
  }
  if (added_.size() > kMostDaysOfObject) RefuseDays();
}

TextTime EventTimes::AtLocal(const DateTime& local) const {
  return {local, begin_.IsDate, begin_.In, begin_.IsDate ? sys_seconds{local.Day} : begin_.In->Moment(local)};
}

bool EventTimes::IsEndless() const {
  return std::ranges::any_of(rules_, &Recurrence::IsEndless);
}

std::optional<Date> EventTimes::Until() const {
  if (rules_.size() != 1 || !added_.empty() || !rules_.front().HasUntil()) return std::nullopt;
  return rules_.front().Until().Day;
}

std::optional<Date> EventTimes::LastLeftOut() const {
  const auto last = std::ranges::max_element(leftOut_, {}, &TextTime::Moment);
  if (last == leftOut_.end()) return std::nullopt;
  return last->Local.Day;
}

EventTimes::Instances EventTimes::Expand(Date last, WorkBudget& budget) const {
  Instances instances;
  instances.All.push_back({begin_});
  for (const Recurrence& rule : rules_) {
    Recurrence::Days found = rule.Expand(begin_.Local, last, kMostDaysOfObject + 1, budget);
    // The first occurrence counts, also when the rule does not give it.
    const bool hasExtra = !found.Times.empty() && found.Times.front() != begin_.Local;
    if (rule.HasCount() && found.IsComplete && hasExtra) found.Times.pop_back();
    instances.IsComplete &= found.IsComplete;
    for (const DateTime& local : found.Times) instances.All.push_back({AtLocal(local)});
  }
  std::ranges::copy(added_, std::back_inserter(instances.All));
  const auto moment = [](const Instance& instance) { return instance.Begin.Moment; };
  std::ranges::stable_sort(instances.All, {}, moment);
  const auto isRepeated = [&](const Instance& a, const Instance& b) { return moment(a) == moment(b); };
  instances.All.erase(std::unique(instances.All.begin(), instances.All.end(), isRepeated),
                      instances.All.end());
  LeaveOut(instances.All, last, budget);
  return instances;
}

void EventTimes::LeaveOut(std::vector<Instance>& instances, Date last, WorkBudget& budget) const {
  if (leftOut_.empty() && exceptionRules_.empty()) return;
  std::unordered_set<long long> moments;
  std::unordered_set<long long> wholeDays;
  for (const TextTime& time : leftOut_) {
    if (time.IsDate || begin_.IsDate) {
      wholeDays.insert(time.Local.Day.time_since_epoch().count());
    } else {
      moments.insert(time.Moment.time_since_epoch().count());
    }
  }
  for (const Recurrence& rule : exceptionRules_) {
    for (const DateTime& local : rule.Expand(begin_.Local, last, kMostDaysOfObject, budget).Times) {
      const TextTime time = AtLocal(local);
      (begin_.IsDate ? wholeDays : moments)
          .insert(begin_.IsDate ? local.Day.time_since_epoch().count()
                                : time.Moment.time_since_epoch().count());
    }
  }
  for (Instance& instance : instances) {
    instance.IsLeftOut = moments.contains(instance.Begin.Moment.time_since_epoch().count()) ||
                         wholeDays.contains(instance.Begin.Local.Day.time_since_epoch().count());
  }
}

std::optional<TextTime> EventTimes::EndOf(const Instance& instance) const {
  const EventLength length = instance.Length.value_or(length_);
  if (length.IsNone()) return std::nullopt;
  const TextTime& begin = instance.Begin;
  if (begin.IsDate) return Moved(begin, length.ByClock + length.Exact);
  TextTime end = Moved(begin, length.ByClock);
  // Where the clocks change as it begins, the time that they show says nothing about its length.
  if (!begin.In->IsShownOnce(begin.Local)) end.Moment = begin.Moment + length.ByClock;
  if (length.ByClock == seconds{0}) end.Moment = begin.Moment;
  if (length.Exact == seconds{0}) return end;
  end.Moment += length.Exact;
  end.Local = end.In->Local(end.Moment);
  return end;
}

TextTime EventTimes::MovedLike(const TextTime& time) const {
  TextTime moved = time;
  moved.In = begin_.In;
  moved.IsDate = begin_.IsDate;
  return Moved(moved, Between(recurrenceId_->Local, begin_.Local));
}

TextTime EventTimes::Moved(const TextTime& time, seconds by) {
  TextTime moved = time;
  moved.Local = After(time.Local, by);
  moved.Moment = time.IsDate ? sys_seconds{moved.Local.Day} : time.In->Moment(moved.Local);
  return moved;
}

}  // namespace orlune
