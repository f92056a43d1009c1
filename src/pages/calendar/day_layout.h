#pragma once

#include <optional>
#include <span>
#include <vector>

#include "model/ol_events.h"

namespace orlune {

/// The hours that a day view shows, both inclusive; none when `Last` is before `First`.
struct DisplayedHours {
  int First;
  int Last;
};

/// Whether a timed event occupies `hour`: it begins in it, or begins earlier and ends in a later hour.
bool Occupies(const OL_Event& event, int hour);
/// The number of occurrences of `day` that occupy `hour`.
int Occupancy(std::span<const Occurrence> day, int hour);
/// The largest occupancy of a displayed hour, but at least 1.
int ColumnCount(std::span<const Occurrence> day, DisplayedHours hours);

/// The number of rows that the cell of an event spans when it begins in the row of `hour`; nothing otherwise.
/// It begins in the row of the event's first hour, or in that of `firstHour` when the event began earlier. 0
/// when the event ends in its first hour, negative when it ends before.
std::optional<int> SpanInRow(const OL_Event& event, int hour, int firstHour);

/// The event columns of a day view while its rows are written from the top: for each, how many more rows it
/// is occupied.
class ColumnTable {
 public:
  explicit ColumnTable(int columnCount) : remainingRows_(static_cast<std::size_t>(columnCount)) {}

  /// Occupies the first free column for `span` rows; adds a column when none is free.
  void Allocate(int span);
  /// The lengths of the runs of adjacent free columns, from the left.
  std::vector<int> FreeRuns() const;
  void EndRow();

 private:
  std::vector<int> remainingRows_;
  std::size_t firstFree_ = 0;  ///< columns before it are occupied in this row
};

}  // namespace orlune
