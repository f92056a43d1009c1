#include "store/event_store.h"

#include "base/date_text.h"
#include "base/dates.h"
#include "base/text.h"
#include "store/database_access.h"
#include "store/event_reader.h"
#include "store/rows.h"

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
      {"SuggestState", SqlText(StoredText(event.SuggestState))},
      {"EventName", QuoteFreeText(event.EventName)},
      {"Owner", SqlText(event.Owner)},
      {"Type", SqlText(StoredText(event.Type))},
      {"Private", SqlValue(event.Private ? "*yes" : "*no")},
      {"BeginDate", SqlText(FormatShortDate(regional, event.BeginDate))},
      {"BeginTime", TimeValue(event.BeginTime)},
      {"EndTime", TimeValue(event.EndTime)},
      {"Comments", QuoteFreeText(event.Comments)},
      {"EventType", SqlText(event.EventType)},
  };
  if (event.Type == Repetition::kNone) return columns;
  columns.push_back({"EndDate", SqlText(FormatShortDate(regional, event.EndDate))});
  if (event.Type == Repetition::kByWeekday) {
    columns.push_back({"RepeatWeekday", SqlText(event.RepeatWeekday)});
    columns.push_back(
        {"RepeatFrequency", SqlText(event.RepeatFrequency ? StoredText(*event.RepeatFrequency) : "")});
  } else if (event.Type == Repetition::kMonthly || event.Type == Repetition::kYearly) {
    columns.push_back({"RepeatDay", SqlText(event.RepeatDay)});
    columns.push_back({"RepeatWeekends", SqlText(StoredText(event.RepeatWeekends))});
  }
  return columns;
}

OL_Event ReadOccurrenceRule(const ResultSet& row) {
  OL_Event event;
  event.Type = RepetitionOf(TextIn(row, "Type")).value_or(Repetition::kUnknown);
  event.BeginDate = DateOf(row.Get(row.Column("BeginDate"))).value_or(Date{});
  event.EndDate = DateOf(row.Get(row.Column("EndDate"))).value_or(event.BeginDate);
  event.RepeatWeekday = TextIn(row, "RepeatWeekday");
  event.RepeatFrequency = FrequencyOf(TextIn(row, "RepeatFrequency"));
  event.RepeatDay = TextIn(row, "RepeatDay");
  event.RepeatWeekends = WeekendRuleOf(TextIn(row, "RepeatWeekends")).value_or(WeekendRule::kKeep);
  return event;
}

/// The condition that the event is in one of `calendars`.
Statement IsIn(std::span<const std::string> calendars) {
  return calendars.empty() ? Statement("(EventID = 0)") : Statement("(Owner IN ({}))", QuotedList(calendars));
}

Statement SearchStatement(const EventSearch& search, std::string_view loginName,
                          const std::optional<std::vector<std::string>>& changeable) {
  Statement query(
      "SELECT SuggestState, FriendlyName, EventID, EventName, Owner, Type, BeginDate, "
      "EndDate, BeginTime, EndTime, Private FROM Events "
      "INNER JOIN Calendars ON Events.Owner = Calendars.Name "
      "WHERE ((EventName LIKE '%{}%') OR (Comments LIKE '%{}%')) ",
      search.Text, search.Text);
  if (changeable) query.Add("AND (Private = no OR {}) ", IsIn(*changeable));
  if (search.Calendar.empty()) {
    query.Add("AND (IsHidden = no OR Owner = '{}') ", loginName);
  } else {
    query.Add("AND (Owner = '{}') ", search.Calendar);
  }
  if (!search.Kind.empty()) query.Add("AND (Type = '{}') ", search.Kind);
  query.Add("AND (BeginDate >= DateValue('{}') OR EndDate >= DateValue('{}')) ", search.StartDate,
            search.StartDate);
  return query.Add(
      "AND (SuggestState In ('accepted', '-') OR SuggestState Is Null) ORDER BY BeginDate, BeginTime");
}

std::vector<FoundEvent> ReadFoundEvents(ResultSet& rows) {
  const int id = rows.Column("EventID");
  const int name = rows.Column("EventName");
  const int owner = rows.Column("Owner");
  const int ownerName = rows.Column("FriendlyName");
  const int isPrivate = rows.Column("Private");
  const int beginTime = rows.Column("BeginTime");
  const int endTime = rows.Column("EndTime");
  const auto text = [&](int column) { return std::string(TextOf(rows.Get(column))); };
  std::vector<FoundEvent> events;
  while (rows.Next()) {
    events.push_back({NumberOf(rows.Get(id)).value_or(0), text(name), text(owner), text(ownerName),
                      YesNoOf(rows.Get(isPrivate)), TimeOf(rows.Get(beginTime)), TimeOf(rows.Get(endTime))});
  }
  return events;
}

}  // namespace

void SaveEvent(Connection& database, const RegionalSettings& regional, const OL_Event& event,
               std::span<const std::string> changeable) {
  const auto columns = StoredColumns(regional, event);
  if (event.EventID == 0) {
    database.Execute(BuildSql(SqlMode::kInsert, "Events", columns));
  } else {
    database.Execute(BuildSql(SqlMode::kUpdate, "Events", columns,
                              Statement("WHERE (EventID = {}) AND {}", event.EventID, IsIn(changeable))));
  }
}

void DeleteEvents(Connection& database, std::string_view ids, std::span<const std::string> changeable) {
  database.Execute(Statement("DELETE FROM Events WHERE (EventID IN ({})) AND {}", ids, IsIn(changeable)));
}

Query<std::optional<OL_Event>> FindEvent(int id) {
  return {Statement("SELECT * FROM Events WHERE (EventID = {})", id), [](ResultSet& rows) {
            return FirstRow(rows, [](const ResultSet& row) { return EventReader(row).Read(row); });
          }};
}

Query<std::vector<std::string>> OwnersOfEvents(std::string_view ids) {
  return {Statement("SELECT Owner FROM Events WHERE (EventID IN ({}))", ids),
          [](ResultSet& rows) { return TextsIn(rows, "Owner"); }};
}

Query<std::optional<OL_Event>> OccurrenceRuleOf(int id) {
  return {Statement("SELECT EventName, Type, BeginDate, EndDate, BeginTime, EndTime, RepeatWeekday, "
                    "RepeatFrequency, RepeatDay, RepeatWeekends FROM Events WHERE (EventID = {})",
                    id),
          [](ResultSet& rows) { return FirstRow(rows, ReadOccurrenceRule); }};
}

Query<std::vector<FoundEvent>> FindEvents(const EventSearch& search, std::string_view loginName,
                                          const std::optional<std::vector<std::string>>& changeable) {
  return {SearchStatement(search, loginName, changeable), ReadFoundEvents};
}

namespace {

Statement OwnerFilter(std::string_view view, std::span<const std::string> owners) {
  if (view == "lomat") return Statement("(EventType = 'loma' OR EventType = 'poissaolo') ");
  if (view == "julkaisut") return Statement("(Owner = 'Julkaisut') ");
  return Statement("(Owner In ({})) ", QuotedList(owners));
}

constexpr std::size_t kUsualEvents = 64;

std::vector<OL_Event> ReadEvents(ResultSet& rows) {
  const EventReader reader(rows);
  std::vector<OL_Event> events;
  events.reserve(kUsualEvents);
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
