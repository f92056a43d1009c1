#include "icalendar/series_planner.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <tuple>

#include "base/dates.h"
#include "exchange/calendar_text.h"
#include "icalendar/repetition_finder.h"
#include "icalendar/row_rule.h"

namespace orlune {

using std::chrono::days;

namespace {

constexpr Date kEndOfEndless = std::chrono::year{2099} / 12 / 31;
constexpr std::size_t kMostGroups = 100;

[[noreturn]] void RefuseDays(const char* sentence) {
  throw InvalidCalendarText(TextFault::kTooManyDays, sentence);
}

/// What of one occurrence is shown on a day, or on several whole days.
struct Part {
  enum class Role { kBegin, kMiddle, kEnd };

  Role In = Role::kBegin;
  Date First;
  Date Last;
  std::optional<TimeOfDay> BeginTime{};
  std::optional<TimeOfDay> EndTime{};
};

DateTime OnServer(const TextTime& time, const Zone& server) {
  // In the zone of the server rows hold what the clock shows.
  DateTime local = time.In == &server ? time.Local : server.Local(time.Moment);
  local.Time = std::chrono::floor<std::chrono::minutes>(local.Time);
  return local;
}

std::vector<Part> PartsOverMidnight(const DateTime& begin, const DateTime& end) {
  std::vector<Part> parts{{Part::Role::kBegin, begin.Day, begin.Day, begin.Time, std::nullopt}};
  if (end.Day - days{1} > begin.Day)
    parts.push_back(
        {Part::Role::kMiddle, begin.Day + days{1}, end.Day - days{1}, std::nullopt, std::nullopt});
  if (end.Time > TimeOfDay{0}) parts.push_back({Part::Role::kEnd, end.Day, end.Day, TimeOfDay{0}, end.Time});
  return parts;
}

std::vector<Part> PartsOf(const Instance& instance, const EventTimes& times, const Zone& server) {
  const std::optional<TextTime> end = times.EndOf(instance);
  if (instance.Begin.IsDate) {
    const Date first = instance.Begin.Local.Day;
    return {{Part::Role::kBegin, first, end ? end->Local.Day - days{1} : first, std::nullopt, std::nullopt}};
  }
  const DateTime begin = OnServer(instance.Begin, server);
  const DateTime until = end ? OnServer(*end, server) : begin;
  if (until.Day > begin.Day) return PartsOverMidnight(begin, until);
  if (!IsBefore(begin, until)) return {{Part::Role::kBegin, begin.Day, begin.Day, begin.Time, std::nullopt}};
  return {{Part::Role::kBegin, begin.Day, begin.Day, begin.Time, until.Time}};
}

ObjectEvent RowOf(const Part& part) {
  ObjectEvent row;
  row.Event.BeginDate = part.First;
  row.Event.EndDate = part.Last;
  row.Event.BeginTime = part.BeginTime;
  row.Event.EndTime = part.EndTime;
  row.Event.Type = part.First == part.Last ? Repetition::kNone : Repetition::kDaily;
  return row;
}

/// The days that occurrences at one time of day are shown on.
struct Group {
  Part Like;
  std::vector<Date> All;   ///< those left out included
  std::vector<Date> Left;  ///< without them
};

void SortUnique(std::vector<Date>& dates) {
  std::ranges::sort(dates);
  dates.erase(std::unique(dates.begin(), dates.end()), dates.end());
}

class GroupMaker {
 public:
  GroupMaker(const Series& series, const Zone& server) : series_(series), server_(server) {}

  /// In the order of their first days.
  std::vector<Group> Make() {
    for (const Instance& instance : series_.Instances) {
      for (const Part& part : PartsOf(instance, *series_.Times, server_)) Add(part, instance.IsLeftOut);
    }
    for (Group& group : groups_) {
      SortUnique(group.All);
      SortUnique(group.Left);
    }
    return std::move(groups_);
  }

 private:
  void Add(const Part& part, bool isLeftOut) {
    const auto key = std::tuple(part.In, part.BeginTime, part.EndTime);
    const auto [place, isNew] = places_.emplace(key, groups_.size());
    if (isNew) groups_.push_back({part, {}, {}});
    if (groups_.size() > kMostGroups) RefuseDays("The event is at too many different times of day.");
    Group& group = groups_[place->second];
    for (Date day = part.First; day <= part.Last; day += days{1}) {
      if (++days_ > 2 * kMostDaysOfObject) RefuseDays("The event has more than 20,000 days.");
      group.All.push_back(day);
      if (!isLeftOut) group.Left.push_back(day);
    }
  }

  const Series& series_;
  const Zone& server_;
  std::map<std::tuple<Part::Role, std::optional<TimeOfDay>, std::optional<TimeOfDay>>, std::size_t> places_;
  std::vector<Group> groups_;
  std::size_t days_ = 0;
};

class SeriesPlanner {
 public:
  SeriesPlanner(const Series& series, Date certainTo, const Zone& server, const Week& week)
      : series_(series),
        certainTo_(std::min(certainTo, series.KnownTo) - kZoneMargin),
        week_(week),
        groups_(GroupMaker(series, server).Make()) {}

  SeriesRows Plan() {
    SeriesRows planned;
    for (std::size_t i = 0; i < groups_.size(); ++i) {
      if (KnownDays(groups_[i].Left).empty()) continue;
      ObjectEvent row = RowOfGroup(i, planned);
      row.Place = static_cast<int>(i);
      planned.Rows.push_back(std::move(row));
    }
    return planned;
  }

 private:
  ObjectEvent RowOfGroup(std::size_t index, SeriesRows& planned) {
    const Group& group = groups_[index];
    std::optional<OL_Event> rule;
    if (series_.HasRule && IsLargest(index)) {
      const std::vector<Date> all = DaysOfRole(group.Like.In);
      rule = FindRule(all);
      // Its days at other times of day are listed as far as they are known.
      if (rule && all.size() > group.All.size()) planned.ListsAhead |= GoesOn();
    }
    if (!rule) rule = FindRule(group.All);
    ObjectEvent row = RowOf(group.Like);
    if (rule) {
      TakeRule(row.Event, *rule);
      row.Days.LeftOut = LeftOutOf(row, group.Left);
    } else {
      List(row, KnownDays(group.Left));
      planned.ListsAhead |= GoesOn();
    }
    return row;
  }

  bool GoesOn() const { return !series_.IsComplete; }

  std::size_t CertainDays(const Group& group) const {
    return static_cast<std::size_t>(std::ranges::upper_bound(group.All, certainTo_) - group.All.begin());
  }

  /// Whether no other group of its role has more days, as far as the kind of repetition is tried.
  bool IsLargest(std::size_t index) const {
    const Group& group = groups_[index];
    const std::size_t size = GoesOn() ? CertainDays(group) : group.All.size();
    for (std::size_t i = 0; i < groups_.size(); ++i) {
      if (i == index || groups_[i].Like.In != group.Like.In) continue;
      const std::size_t other = GoesOn() ? CertainDays(groups_[i]) : groups_[i].All.size();
      if (other > size || (other == size && i < index)) return false;
    }
    return true;
  }

  std::vector<Date> DaysOfRole(Part::Role role) const {
    std::vector<Date> all;
    for (const Group& group : groups_) {
      if (group.Like.In == role) all.insert(all.end(), group.All.begin(), group.All.end());
    }
    SortUnique(all);
    return all;
  }

  std::optional<OL_Event> FindRule(const std::vector<Date>& all) const {
    if (GoesOn()) {
      const auto end = std::ranges::upper_bound(all, certainTo_);
      if (end == all.begin()) return std::nullopt;
      const Date last = series_.EndsOn.value_or(std::max(kEndOfEndless, AddMonths(all.front(), 120)));
      return FindRepetition({{all.begin(), end}, certainTo_, std::max(last, certainTo_)}, week_);
    }
    if (all.size() == 1) {
      OL_Event once;
      once.BeginDate = once.EndDate = all.front();
      return once;
    }
    if (!series_.HasRule) return std::nullopt;
    if (series_.EndsOn && *series_.EndsOn > all.back() && *series_.EndsOn < kFarEnd) {
      if (auto rule = FindRepetition({all, *series_.EndsOn}, week_)) return rule;
    }
    return FindRepetition({all, all.back()}, week_);
  }

  static void TakeRule(OL_Event& event, const OL_Event& rule) {
    event.Type = rule.Type;
    event.BeginDate = rule.BeginDate;
    event.EndDate = rule.EndDate;
    event.RepeatWeekday = rule.RepeatWeekday;
    event.RepeatFrequency = rule.RepeatFrequency;
    event.RepeatDay = rule.RepeatDay;
    event.RepeatWeekends = rule.RepeatWeekends;
  }

  /// The days of the rule that are not among `left`, as far as the series is known.
  std::vector<Date> LeftOutOf(const ObjectEvent& row, const std::vector<Date>& left) const {
    if (row.Event.Type == Repetition::kNone) return {};
    ObjectEvent known = row;
    if (GoesOn()) known.Event.EndDate = std::min(known.Event.EndDate, series_.KnownTo - kZoneMargin);
    std::vector<Date> leftOut;
    std::ranges::set_difference(DaysOf(known, week_), left, std::back_inserter(leftOut));
    return leftOut;
  }

  /// Of a series without end, the days that all its occurrences are known of.
  std::vector<Date> KnownDays(std::vector<Date> dates) const {
    if (GoesOn()) std::erase_if(dates, [this](Date day) { return day > series_.KnownTo - kZoneMargin; });
    return dates;
  }

  static void List(ObjectEvent& row, const std::vector<Date>& left) {
    row.Event.BeginDate = left.front();
    row.Event.EndDate = left.back();
    row.Event.Type = left.size() == 1 ? Repetition::kNone : Repetition::kListed;
    if (left.size() > 1) row.Days.Listed = left;
    if (left.size() > kMostDaysOfObject) RefuseDays("The event has more than 20,000 days.");
  }

  const Series& series_;
  const Date certainTo_;
  const Week& week_;
  const std::vector<Group> groups_;
};

}  // namespace

SeriesRows PlanSeries(const Series& series, Date certainTo, const Zone& server, const Week& week) {
  if (series.Repeats) return SeriesPlanner(series, certainTo, server, week).Plan();
  SeriesRows planned;
  for (const Instance& instance : series.Instances) {
    if (instance.IsLeftOut) continue;
    for (const Part& part : PartsOf(instance, *series.Times, server)) {
      planned.Rows.push_back(RowOf(part));
      planned.Rows.back().Place = static_cast<int>(planned.Rows.size()) - 1;
    }
  }
  return planned;
}

}  // namespace orlune
