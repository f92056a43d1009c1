#include "icalendar/rows_planner.h"

#include <algorithm>
#include <set>
#include <string>

#include "base/dates.h"
#include "exchange/calendar_text.h"
#include "icalendar/event_texts.h"
#include "icalendar/series_planner.h"

namespace orlune {

using std::chrono::days;

namespace {

constexpr int kMonthsToFindKind = 120;

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
        throw InvalidCalendarText(TextFault::kTooManyDays, "The event has more than 20,000 days.");
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

}  // namespace

PlannedRows PlanRows(const ObjectParts& parts, TextZones& zones, const PlanSettings& settings,
                     WorkBudget& budget) {
  return RowsPlanner(parts, zones, settings, budget).Plan();
}

}  // namespace orlune
