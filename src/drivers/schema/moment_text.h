#pragma once

#include <string>

#include "drivers/access_sql/catalogue.h"
#include "drivers/schema/database_maintenance.h"
#include "platform/civil_time.h"

namespace orlune::schema {

/// Days and times as every engine writes them: YYYY-MM-DD, HH:MM:SS, and the two with a blank between.
std::string MomentText(Date date);
std::string MomentText(TimeOfDay time);
std::string MomentText(const DateTime& moment);

/// Reads such a text, for a column of days or times; Unreadable when it is none that the pages know.
StoredField ReadMoment(std::string stored, access_sql::ColumnType type);

}  // namespace orlune::schema
