#pragma once

#include "commands/calendar_names.h"
#include "commands/findings.h"
#include "drivers/dialect/catalogue.h"
#include "drivers/schema/database_maintenance.h"

namespace orlune {

/// Each of these reads one table from start to end and adds what is wrong in its rows to `findings`. The
/// tables have the columns that exist. All throw DatabaseError.

/// Fields that do not fit their columns, in any table.
void CheckFields(DatabaseMaintenance& database, const dialect::Table& table, Findings& findings);

/// Memberships and adminships, and colour schemes of users; `styleSheets` is null when the table is missing.
void CheckCalendars(DatabaseMaintenance& database, const dialect::Table& calendars,
                    const dialect::Table* styleSheets, const CalendarNames& names, Findings& findings);
/// Owners, begin dates, repetition rules and the events that suggestions refer to.
void CheckEvents(DatabaseMaintenance& database, const dialect::Table& events, const CalendarNames& names,
                 Findings& findings);
void CheckMessages(DatabaseMaintenance& database, const dialect::Table& messages, const CalendarNames& names,
                   Findings& findings);
/// Owners, names, and whether there is a colour for each calendar that is shown.
void CheckGroupViews(DatabaseMaintenance& database, const dialect::Table& groupViews,
                     const CalendarNames& names, Findings& findings);

/// What refers to events, objects, users and calendars that are gone, and events without their days, in the
/// tables of shared calendars, as far as `tables` has them.
void CheckSharing(DatabaseMaintenance& database, const dialect::Catalogue& tables, const CalendarNames& names,
                  Findings& findings);

}  // namespace orlune
