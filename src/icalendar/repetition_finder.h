#pragma once

#include <optional>
#include <span>

#include "base/week.h"
#include "model/ol_event.h"

namespace orlune {

/// Some days of a series, all of them up to `Last`.
struct SeriesDays {
  std::span<const Date> Days;      ///< in ascending order, at least one
  Date Last;                       ///< not before the last of them
  std::optional<Date> GoesOnTo{};  ///< when there are more after `Last`, and the rule holds to this day
};

/// A kind of repetition that gives the same days, with `BeginDate`, `EndDate` and its rule set; before the
/// first of them it may give more. Nothing when no kind does.
std::optional<OL_Event> FindRepetition(const SeriesDays& series, const Week& week);

}  // namespace orlune
