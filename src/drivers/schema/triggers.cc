#include "drivers/schema/triggers.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "drivers/dialect/engine_sql.h"

namespace orlune::schema {

namespace {

using dialect::Quoted;

/// Their changes are those that others can see.
constexpr std::array<std::string_view, 17> kEventColumns{
    "EventID",        "EventName", "Owner",     "Type",          "BeginDate", "EndDate",
    "BeginTime",      "EndTime",   "EventType", "RepeatWeekday", "RepeatDay", "RepeatFrequency",
    "RepeatWeekends", "Comments",  "Private",   "SuggestState",  "SuggID"};
constexpr std::array<std::string_view, 4> kObjectColumns{"ResourceName", "UID", "ObjectText", "RowsDigest"};

/// The tables by the names that they have in the database, quoted.
struct SharingTables {
  explicit SharingTables(const dialect::Catalogue& catalogue)
      : Events(NameOf(catalogue, "Events")),
        EventDays(NameOf(catalogue, "EventDays")),
        ObjectEvents(NameOf(catalogue, "ObjectEvents")),
        CalendarObjects(NameOf(catalogue, "CalendarObjects")),
        CalendarChanges(NameOf(catalogue, "CalendarChanges")) {}

  static std::string NameOf(const dialect::Catalogue& catalogue, std::string_view table) {
    return catalogue.Find(table)->Name;
  }

  std::string Events;
  std::string EventDays;
  std::string ObjectEvents;
  std::string CalendarObjects;
  std::string CalendarChanges;
};

/// Writes the SQL of the triggers.
class TriggerWriter {
 public:
  TriggerWriter(const dialect::Catalogue& catalogue, const TriggerSql& sql) : tables_(catalogue), sql_(sql) {}

  std::vector<Trigger> Triggers() const {
    std::vector<Trigger> triggers{EventInserted(), EventUpdated(), EventDeleted(), ObjectUpdated()};
    for (const std::string& table : {tables_.EventDays, tables_.ObjectEvents}) {
      triggers.push_back(PartChanged(table, "INSERT", {"NEW"}));
      triggers.push_back(PartChanged(table, "UPDATE", {"OLD", "NEW"}));
      triggers.push_back(PartChanged(table, "DELETE", {"OLD"}));
    }
    return triggers;
  }

 private:
  using Statements = std::vector<std::string>;

  /// It belongs to no object yet.
  Trigger EventInserted() const {
    return Made(tables_.Events, "INSERT", {Logged("NEW.\"Owner\"", "'/' || NEW.\"EventID\"", "")});
  }

  /// Logs where it was before, too.
  Trigger EventUpdated() const {
    const std::string hasMoved =
        "(OLD.\"Owner\" IS DISTINCT FROM NEW.\"Owner\" OR OLD.\"EventID\" <> NEW.\"EventID\") AND ";
    Trigger trigger = Made(tables_.Events, "UPDATE",
                           {Logged("NEW.\"Owner\"", ResourceOf("NEW.\"EventID\""), ""),
                            Logged("OLD.\"Owner\"", ResourceOf("OLD.\"EventID\""), hasMoved)});
    trigger.Condition = Differs(kEventColumns);
    return trigger;
  }

  /// An object goes with the last of its events.
  Trigger EventDeleted() const {
    const std::string ofEvent = " WHERE \"EventID\" = OLD.\"EventID\"";
    const std::string objects = Quoted(tables_.CalendarObjects);
    const std::string ties = Quoted(tables_.ObjectEvents);
    Statements statements{Logged("OLD.\"Owner\"", ResourceOf("OLD.\"EventID\""), "")};
    statements.push_back("DELETE FROM " + Quoted(tables_.EventDays) + ofEvent);
    statements.push_back("DELETE FROM " + objects + " WHERE \"ObjectID\" IN (SELECT \"ObjectID\" FROM " +
                         ties + ofEvent + ") AND NOT EXISTS (SELECT 1 FROM " + ties +
                         " t WHERE t.\"ObjectID\" = " + objects +
                         ".\"ObjectID\" AND t.\"EventID\" <> OLD.\"EventID\")");
    statements.push_back("DELETE FROM " + ties + ofEvent);
    Trigger trigger = Made(tables_.Events, "DELETE", std::move(statements));
    for (const std::string& table : {tables_.EventDays, tables_.CalendarObjects, tables_.ObjectEvents})
      trigger.Written.push_back(table);
    return trigger;
  }

  /// The events of an object are in one calendar, unless one has been moved to another.
  Trigger ObjectUpdated() const {
    Statements statements;
    for (const char* choice : {"min", "max"}) {
      const std::string owner = std::string("(SELECT ") + choice + "(e.\"Owner\") FROM " +
                                Quoted(tables_.Events) + " e JOIN " + Quoted(tables_.ObjectEvents) +
                                " t ON t.\"EventID\" = e.\"EventID\" WHERE t.\"ObjectID\" = "
                                "NEW.\"ObjectID\")";
      for (std::string& statement : LoggedOnce(owner, "NEW.\"ResourceName\""))
        statements.push_back(std::move(statement));
    }
    Trigger trigger = Made(tables_.CalendarObjects, "UPDATE", std::move(statements));
    trigger.Condition = Differs(kObjectColumns);
    return trigger;
  }

  /// Of the rows that belong to an event.
  Trigger PartChanged(const std::string& table, std::string_view change,
                      const std::vector<std::string>& rows) const {
    Statements statements;
    for (const std::string& row : rows) {
      const std::string event = row + ".\"EventID\"";
      const std::string owner =
          "(SELECT \"Owner\" FROM " + Quoted(tables_.Events) + " WHERE \"EventID\" = " + event + ")";
      for (std::string& statement : LoggedOnce(owner, ResourceOf(event)))
        statements.push_back(std::move(statement));
    }
    return Made(table, change, std::move(statements));
  }

  Trigger Made(const std::string& table, std::string_view change, Statements statements) const {
    std::string name = "Orlune" + table;
    name.append(change);
    return {std::move(name), table, change, {}, std::move(statements), {tables_.CalendarChanges}};
  }

  /// The name of the object that an event belongs to; "/" and its number when it belongs to none.
  std::string ResourceOf(const std::string& event) const {
    return "coalesce((SELECT o.\"ResourceName\" FROM " + Quoted(tables_.ObjectEvents) + " t JOIN " +
           Quoted(tables_.CalendarObjects) +
           " o ON o.\"ObjectID\" = t.\"ObjectID\" WHERE t.\"EventID\" = " + event + " LIMIT 1), '/' || " +
           event + ")";
  }

  /// Logs a change where there is a `calendar`; `condition` is "" or ends with AND.
  std::string Logged(const std::string& calendar, const std::string& resource,
                     const std::string& condition) const {
    return "INSERT INTO " + Quoted(tables_.CalendarChanges) +
           " (\"Calendar\", \"ResourceName\", \"Moment\") SELECT " + calendar + ", " + resource + ", " +
           std::string(sql_.NextMoment) + " WHERE " + condition + calendar + " IS NOT NULL";
  }

  /// Logs a change of what belongs to an event, of which there may be thousands: when the newest change is of
  /// the same resource, that one becomes newer.
  Statements LoggedOnce(const std::string& calendar, const std::string& resource) const {
    const std::string log = Quoted(tables_.CalendarChanges);
    const std::string isNewest = "\"ChangeID\" = (SELECT max(\"ChangeID\") FROM " + log +
                                 ") AND \"Calendar\" = " + calendar + Exactly() +
                                 " AND \"ResourceName\" = " + resource + Exactly();
    const std::string moment(sql_.NextMoment);
    // A row that a transaction updates again and again gets slower each time.
    return {"UPDATE " + log + " SET \"Moment\" = " + moment + " WHERE " + isNewest + " AND \"Moment\" <> " +
                moment,
            Logged(calendar, resource, "NOT EXISTS (SELECT 1 FROM " + log + " WHERE " + isNewest + ") AND ")};
  }

  std::string Exactly() const { return std::string(sql_.Exactly); }

  std::string Differs(std::span<const std::string_view> columns) const {
    std::string condition;
    for (const std::string_view column : columns) {
      if (!condition.empty()) condition += " OR ";
      condition += "OLD." + Quoted(column) + Exactly() + " IS DISTINCT FROM NEW." + Quoted(column);
    }
    return condition;
  }

  const SharingTables tables_;
  const TriggerSql& sql_;
};

/// What belongs to a calendar by its name.
struct Belonging {
  std::string_view Table;
  std::string_view Column;
};
constexpr std::array<Belonging, 5> kBelongings{{{"AppPasswords", "Login"},
                                                {"SecretLinks", "Login"},
                                                {"SecretLinks", "Calendar"},
                                                {"DeviceSettings", "Login"},
                                                {"DeviceSettings", "Calendar"}}};

/// Renames or deletes what belongs to a renamed or deleted calendar.
Trigger CalendarTrigger(const dialect::Catalogue& catalogue, const TriggerSql& sql, std::string_view change) {
  constexpr auto kText = dialect::ColumnType::kText;
  const bool isRenamed = change == "UPDATE";
  const std::string calendars = catalogue.Find("Calendars")->Name;
  Trigger trigger{"Orlune" + calendars + std::string(change), calendars, change, {}, {}, {}};
  for (const auto& [name, column] : kBelongings) {
    const std::string& table = catalogue.Find(name)->Name;
    const std::string whose = " WHERE " + sql.Engine.Comparable(Quoted(column), kText) + " = " +
                              sql.Engine.Comparable("OLD.\"Name\"", kText);
    trigger.Statements.push_back(isRenamed ? "UPDATE " + Quoted(table) + " SET " + Quoted(column) +
                                                 " = NEW.\"Name\"" + whose
                                           : "DELETE FROM " + Quoted(table) + whose);
    trigger.Written.push_back(table);
  }
  if (isRenamed)
    trigger.Condition = "OLD.\"Name\"" + std::string(sql.Exactly) + " IS DISTINCT FROM NEW.\"Name\"";
  return trigger;
}

bool HasColumns(const dialect::Table& table, std::span<const std::string_view> columns) {
  return std::all_of(columns.begin(), columns.end(),
                     [&table](std::string_view column) { return table.Find(column) != nullptr; });
}

bool HasTablesOfCalendars(const dialect::Catalogue& catalogue) {
  const dialect::Table* calendars = catalogue.Find("Calendars");
  return calendars != nullptr && calendars->Find("Name") != nullptr &&
         std::all_of(kBelongings.begin(), kBelongings.end(), [&catalogue](const Belonging& belonging) {
           const dialect::Table* table = catalogue.Find(belonging.Table);
           return table != nullptr && table->Find(belonging.Column) != nullptr;
         });
}

bool HasTablesOfLog(const dialect::Catalogue& catalogue) {
  for (const char* table : {"EventDays", "ObjectEvents", "CalendarChanges", "CalendarLogs"}) {
    if (catalogue.Find(table) == nullptr) return false;
  }
  const dialect::Table* events = catalogue.Find("Events");
  const dialect::Table* objects = catalogue.Find("CalendarObjects");
  return events != nullptr && objects != nullptr && HasColumns(*events, kEventColumns) &&
         HasColumns(*objects, kObjectColumns);
}

}  // namespace

std::vector<Trigger> PossibleTriggers(const dialect::Catalogue& catalogue, const TriggerSql& sql) {
  std::vector<Trigger> triggers;
  if (HasTablesOfLog(catalogue)) triggers = TriggerWriter(catalogue, sql).Triggers();
  if (HasTablesOfCalendars(catalogue)) {
    triggers.push_back(CalendarTrigger(catalogue, sql, "UPDATE"));
    triggers.push_back(CalendarTrigger(catalogue, sql, "DELETE"));
  }
  return triggers;
}

}  // namespace orlune::schema
