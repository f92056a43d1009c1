#pragma once

#include <string_view>

#include "model/calendar_record.h"
#include "pages/admin/admin_state.h"
#include "platform/database.h"
#include "platform/page_host.h"

namespace orlune {

// Shared by the managers of users and of groups, which both are rows of Calendars.

/// Copies the stored values to `record`.
void FillRecord(const CalendarRecord& stored, AdminState& record);
CalendarRecord ToStore(const AdminState& record);

/// The form field "hide" when it is "yes" or "no", else `otherwise`.
std::string_view PostedHide(const Request& request, std::string_view otherwise);

/// Whether `name` consists of the letters A to Z and a to z and digits only.
bool IsAlphanumeric(std::string_view name);
/// Whether another calendar has the internal name of `record`.
bool IsNameTaken(Connection& database, const AdminState& record);

}  // namespace orlune
