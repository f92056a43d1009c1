#pragma once

#include <span>
#include <string>

#include "exchange/shared_objects.h"

namespace orlune {

/// One object to be stored: a new one, or another state of an existing one.
struct ObjectChange {
  const SharedObject* Existing = nullptr;
  std::string Name;  ///< of a new one
  const PlannedObject* Planned = nullptr;
};

/// Stores the objects in the calendar, within the transaction of the caller. Where `Planned` says what the
/// text of an existing object says already, its rows stay as they are, also in what text cannot say. Throws
/// DatabaseError.
void StoreObjects(Connection& database, const ExchangeTools& tools, const SharedCalendar& calendar,
                  std::span<const ObjectChange> changes);

}  // namespace orlune
