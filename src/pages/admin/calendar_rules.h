#pragma once

#include <string_view>

#include "model/calendar_record.h"
#include "pages/admin/admin_state.h"
#include "platform/database.h"
#include "platform/page_host.h"

namespace orlune {

// What users and groups, both rows of Calendars, have in common in the administration.

/// Fills `record` from what is stored.
void TakeStored(const CalendarRecord& stored, AdminState& record);
CalendarRecord ToStore(const AdminState& record);

/// Whether the calendar is hidden by the posted form: "yes" or "no", or `otherwise` when it tells neither.
std::string_view PostedHide(const Request& request, std::string_view otherwise);

/// Whether `name` holds nothing but unaccented letters and digits.
bool IsAlphanumeric(std::string_view name);
/// Whether another calendar than the record's has its internal name.
bool IsNameTaken(Connection& database, const AdminState& record);

}  // namespace orlune
