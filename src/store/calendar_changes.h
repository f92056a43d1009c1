#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "platform/database.h"
#include "store/query.h"

namespace orlune {

// The tables CalendarChanges and CalendarLogs: the log of changes, which triggers of the database write. A
// moment ascends with the changes of one connection; see `Connection::ChangeHorizon` for changes at the same
// time.

/// The moment of the last change in one of the calendars; 0 without one.
Query<std::int64_t> LastMomentIn(std::span<const std::string> calendars);
/// What was changed in the calendars from the moment on, each once: the name of an object, or "/" and the
/// number of an event that belongs to none.
Query<std::vector<std::string>> NamesChangedSince(std::span<const std::string> calendars,
                                                  std::int64_t moment);
/// All changes until this moment are gone from the log; 0 when none is.
Query<std::int64_t> TrimmedTo();
/// Removes the oldest changes when there are more than `most`. Throws DatabaseError.
void TrimChanges(Connection& database, std::size_t most);

}  // namespace orlune
