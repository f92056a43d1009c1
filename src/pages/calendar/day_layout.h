#pragma once

#include <optional>
#include <span>
#include <vector>

#include "model/ol_events.h"

namespace orlune {

/// The hours that a day view shows, both included; none when `Last` is before `First`.
struct DisplayedHours {
  int First;
  int Last;
};

/// Whether a timed event takes part of the hour `hour`: it begins within it, or it began earlier and
/// ends in a later one.
bool Occupies(const OL_Event& event, int hour);
/// How many occurrences of `day` occupy `hour`.
int Occupancy(std::span<const Occurrence> day, int hour);
/// The largest occupancy of a displayed hour, but at least 1.
int ColumnCount(std::span<const Occurrence> day, DisplayedHours hours);

/// The number of hour rows that an event covers, given in the row where its cell belongs and nothing in
/// every other row. An event that ends within its first hour covers 0, one that ends before it begins
/// fewer; one that began before the first displayed hour belongs there.
std::optional<int> SpanInRow(const OL_Event& event, int hour, int firstHour);

/// The event columns of a day view while its rows are written from the top: how many more rows each is taken.
class ColumnTable {
 public:
  explicit ColumnTable(int columnCount) : remainingRows_(static_cast<std::size_t>(columnCount)) {}

  /// Takes the first free column for `span` rows; a further one when none is free.
  void Allocate(int span);
  /// The lengths of the runs of free columns, from the left.
  std::vector<int> FreeRuns() const;
  void EndRow();

 private:
  std::vector<int> remainingRows_;
};

}  // namespace orlune
