#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/shared_objects.h"

namespace orlune {

/// The largest file.
inline constexpr std::size_t kMostFileBytes = std::size_t{10} << 20U;

enum class ImportStep { kAdd, kChange, kNothing };

/// What an import makes of one object of the file.
struct ImportedObject {
  PlannedObject Planned;
  ImportStep Step = ImportStep::kAdd;
};

struct ImportPlan {
  std::vector<ImportedObject> Objects;
  std::vector<RefusedComponent> Refused;
};

/// What importing `text` into the calendar would do: an object whose UID the calendar has is changed, or
/// nothing when the file says what is stored. Throws InvalidCalendarText and DatabaseError.
ImportPlan PlanImport(Connection& database, const ExchangeTools& tools, const SharedCalendar& calendar,
                      std::string_view text);
/// Carries out the plan in one transaction. Throws DatabaseError; nothing is stored then.
void RunImport(Connection& database, const ExchangeTools& tools, const SharedCalendar& calendar,
               const ImportPlan& plan);

}  // namespace orlune
