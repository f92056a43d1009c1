#pragma once

#include "model/ol_event.h"
#include "platform/database.h"

namespace orlune {

/// An unknown text is read as `kUndecided`.
SuggestionState ReadSuggestionState(const Value& field);

/// Reads the rows of a query that selects all columns of `Events`.
class EventReader {
 public:
  /// Looks up the columns. Throws DatabaseError when one is missing.
  explicit EventReader(const ResultSet& rows);
  /// The current row.
  OL_Event Read(const ResultSet& rows) const;

 private:
  struct Columns {
    int EventID, EventName, Owner, Type, BeginDate, EndDate, BeginTime, EndTime, RepeatWeekday,
        RepeatFrequency, RepeatDay, RepeatWeekends, Private, Comments, EventType, SuggID, SuggestState;
  };
  Columns columns_;
};

}  // namespace orlune
