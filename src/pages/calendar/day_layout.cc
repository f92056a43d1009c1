#include "pages/calendar/day_layout.h"

#include <algorithm>

namespace orlune {
namespace {

int HourOf(TimeOfDay time) {
  return static_cast<int>(std::chrono::floor<std::chrono::hours>(time).count());
}

}  // namespace

bool Occupies(const OL_Event& event, int hour) {
  if (!event.BeginTime) return false;
  const int begin = HourOf(*event.BeginTime);
  return begin == hour || (event.EndTime && begin < hour && HourOf(*event.EndTime) > hour);
}

int Occupancy(std::span<const Occurrence> day, int hour) {
  return static_cast<int>(std::count_if(day.begin(), day.end(), [&](const Occurrence& occurrence) {
    return Occupies(*occurrence.Event, hour);
  }));
}

int ColumnCount(std::span<const Occurrence> day, DisplayedHours hours) {
  int most = 1;
  for (int hour = hours.First; hour <= hours.Last; ++hour) most = std::max(most, Occupancy(day, hour));
  return most;
}

std::optional<int> SpanInRow(const OL_Event& event, int hour, int firstHour) {
  if (!event.BeginTime) return std::nullopt;
  const int begin = HourOf(*event.BeginTime);
  if (begin == hour) return event.EndTime ? HourOf(*event.EndTime) - begin : 1;
  const bool reachesFirstRow =
      hour == firstHour && begin < hour && event.EndTime && HourOf(*event.EndTime) > firstHour;
  return reachesFirstRow ? std::optional(HourOf(*event.EndTime) - firstHour) : std::nullopt;
}

void ColumnTable::Allocate(int span) {
  while (firstFree_ < remainingRows_.size() && remainingRows_[firstFree_] > 0) ++firstFree_;
  if (firstFree_ == remainingRows_.size()) remainingRows_.push_back(0);
  remainingRows_[firstFree_] = std::max(0, span);
}

std::vector<int> ColumnTable::FreeRuns() const {
  std::vector<int> runs;
  bool isInRun = false;
  for (const int remaining : remainingRows_) {
    const bool isFree = remaining == 0;
    if (isFree && !isInRun) runs.push_back(0);
    if (isFree) ++runs.back();
    isInRun = isFree;
  }
  return runs;
}

void ColumnTable::EndRow() {
  for (int& remaining : remainingRows_) remaining = std::max(0, remaining - 1);
  firstFree_ = 0;
}

}  // namespace orlune
