#pragma once

#include <string>

#include "base/civil_time.h"
#include "drivers/dialect/catalogue.h"
#include "drivers/schema/database_maintenance.h"

namespace orlune::schema {

/// Days and times as every engine writes them: YYYY-MM-DD, HH:MM:SS, and the two with a blank between.
std::string MomentText(Date date);
std::string MomentText(TimeOfDay time);
std::string MomentText(const DateTime& moment);

/// Reads such a text, for a column of days or times; Unreadable when it is none that the pages know.
StoredField ReadMoment(std::string stored, dialect::ColumnType type);

}  // namespace orlune::schema
