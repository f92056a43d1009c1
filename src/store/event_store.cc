#include "store/event_store.h"

#include <vector>

#include "base/date_text.h"
#include "base/dates.h"
#include "base/text.h"
#include "store/database_access.h"
#include "store/event_reader.h"
#include "store/field.h"

namespace orlune {
namespace {

Statement QuoteFreeText(std::string_view text) {
  return SqlText(ReplaceAll(ReplaceAll(text, "'", "&#39;"), "\"", "&quot;"));
}

Statement TimeValue(std::optional<TimeOfDay> time) {
  return time ? SqlText(FormatTime("Hh:Nn", *time)) : SqlValue(std::nullopt);
}

std::vector<ColumnValue> StoredColumns(const RegionalSettings& regional, const OL_Event& event) {
  std::vector<ColumnValue> columns{
      {"SuggID", SqlText(event.SuggID)},
      {"SuggestState", SqlText(event.SuggestState)},
      {"EventName", QuoteFreeText(event.EventName)},
      {"Owner", SqlText(event.Owner)},
      {"Type", SqlText(event.Type)},
      {"Private", SqlValue(event.Private ? "*yes" : "*no")},
      {"BeginDate", SqlText(FormatShortDate(regional, event.BeginDate))},
      {"BeginTime", TimeValue(event.BeginTime)},
      {"EndTime", TimeValue(event.EndTime)},
      {"Comments", QuoteFreeText(event.Comments)},
      {"EventType", SqlText(event.EventType)},
  };
  if (event.Type == "none") return columns;
  columns.push_back({"EndDate", SqlText(FormatShortDate(regional, event.EndDate))});
  if (event.Type == "weekday") {
    columns.push_back({"RepeatWeekday", SqlText(event.RepeatWeekday)});
    columns.push_back({"RepeatFrequency", SqlText(event.RepeatFrequency)});
  } else if (event.Type != "day") {
    columns.push_back({"RepeatDay", SqlText(event.RepeatDay)});
    columns.push_back({"RepeatWeekends", SqlText(event.RepeatWeekends)});
  }
  return columns;
}

}  // namespace

void SaveEvent(Connection& database, const RegionalSettings& regional, const OL_Event& event) {
  const auto columns = StoredColumns(regional, event);
  if (event.EventID == 0) {
    database.Execute(BuildSql(SqlMode::kInsert, "Events", columns));
  } else {
    database.Execute(
        BuildSql(SqlMode::kUpdate, "Events", columns, Statement("WHERE (EventID = {})", event.EventID)));
  }
}

void DeleteEvents(Connection& database, std::string_view ids) {
  database.Execute(Statement("DELETE FROM Events WHERE (EventID IN ({}))", ids));
}

std::optional<int> FindNewestSenderCopy(Connection& database) {
  const auto row = OpenQuery(
      database, Statement("SELECT TOP 1 EventID FROM Events WHERE SuggestState = '-' ORDER BY EventID DESC"));
  return row->Next() ? NumberOf(row->Get(row->Column("EventID"))) : std::nullopt;
}

void SetSuggestState(Connection& database, std::string_view suggId, std::string_view owner,
                     std::string_view state) {
  database.Execute(Statement("UPDATE Events SET SuggestState = '{}' WHERE (SuggID = '{}') AND (Owner = '{}')",
                             state, suggId, owner));
}

namespace {

Statement OwnerFilter(std::string_view view, std::span<const std::string> owners) {
  if (view == "lomat") return Statement("(EventType = 'loma' OR EventType = 'poissaolo') ");
  if (view == "julkaisut") return Statement("(Owner = 'Julkaisut') ");
  return Statement("(Owner In ({})) ", QuotedList(owners));
}

std::vector<OL_Event> ReadEvents(ResultSet& rows) {
  const EventReader reader(rows);
  std::vector<OL_Event> events;
  while (rows.Next()) events.push_back(reader.Read(rows));
  return events;
}

}  // namespace

Query<std::vector<OL_Event>> EventsOfPeriod(const RegionalSettings& regional, std::string_view view,
                                            std::span<const std::string> owners, Date first, Date last) {
  const std::string from = FormatShortDate(regional, first);
  const std::string to = FormatShortDate(regional, last);
  return {Statement("SELECT * FROM Events WHERE {}AND ((Type = 'none' AND BeginDate >= DateValue('{}') "
                    "AND BeginDate <= DateValue('{}')) "
                    "OR (Type <> 'none' AND BeginDate <= DateValue('{}') "
                    "AND EndDate >= DateValue('{}'))) ORDER BY BeginTime",
                    OwnerFilter(view, owners), from, to, to, from),
          ReadEvents};
}

}  // namespace orlune
