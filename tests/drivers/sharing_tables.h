#pragma once

#include "platform/database.h"
#include "store/statement.h"

namespace orlune::testing {

inline void CreateSharingTables(Connection& connection) {
  for (const Statement& creation :
       {Statement("CREATE TABLE EventDays (DayID COUNTER CONSTRAINT DayID PRIMARY KEY, EventID LONG, "
                  "EventDay DATETIME, Role TEXT (10))"),
        Statement("CREATE TABLE CalendarObjects (ObjectID COUNTER CONSTRAINT ObjectID PRIMARY KEY, "
                  "ResourceName TEXT (255), UID TEXT (255), ObjectText MEMO, RowsDigest TEXT (64), "
                  "ListedUntil DATETIME)"),
        Statement("CREATE TABLE ObjectEvents (ObjectEventID COUNTER CONSTRAINT ObjectEventID PRIMARY KEY, "
                  "ObjectID LONG, EventID LONG, Place LONG)"),
        Statement("CREATE TABLE CalendarChanges (ChangeID COUNTER CONSTRAINT ChangeID PRIMARY KEY, "
                  "Calendar TEXT (50), ResourceName TEXT (255), Moment LONG)"),
        Statement("CREATE TABLE CalendarLogs (LogID COUNTER CONSTRAINT LogID PRIMARY KEY, "
                  "LogName TEXT (64), TrimmedTo LONG)")})
    connection.Execute(creation);
}

}  // namespace orlune::testing
