#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "model/event_type.h"
#include "model/record_choice.h"
#include "store/query.h"

namespace orlune {

// The table EventTypes.

Query<std::vector<EventTypeEntry>> AllEventTypes();

/// All event types; `IntName` is the file name.
Query<std::vector<RecordChoice>> EventTypeRecords();
/// Nothing when there is no such type.
Query<std::optional<NamedFile>> EventTypeWithId(std::int64_t id);
/// Updates the type `id`, or inserts one when there is no `id`. Throws DatabaseError.
void SaveEventType(Connection& database, std::optional<std::int64_t> id, const NamedFile& type);
/// Throws DatabaseError.
void DeleteEventType(Connection& database, std::int64_t id);

}  // namespace orlune
