#include "drivers/schema/indexes.h"

#include <algorithm>

namespace orlune::schema {

namespace {

/// Of an event that does not repeat it is "none".
constexpr std::string_view kKindColumn = "Type";

const std::vector<Index>& Indexes() {
  static const std::vector<Index> kIndexes{
      {"CalendarsName", "Calendars", {"Name"}},
      {"CalendarsChoice",
       "Calendars",
       {"IsGroup", "FriendlyName", "CalendarID"},
       IndexedRows::kAll,
       {"Name", "FriendlyName", "IsHidden"}},
      {"EventsOwnerBegin", "Events", {"Owner", "BeginDate"}},
      {"EventsRepeating", "Events", {"Owner", "EndDate", "BeginDate"}, IndexedRows::kRepeating},
      {"EventsSuggID", "Events", {"SuggID"}, IndexedRows::kNotNull},
      {"EventsSuggestState", "Events", {"SuggestState", "EventID"}, IndexedRows::kNotNull},
      {"MessagesUnread", "Messages", {"Recipient", "Viewed"}},
      {"MessagesSent", "Messages", {"Recipient", "SentDate"}},
      {"MessagesSender", "Messages", {"Sender"}},
      {"GroupViewsName", "GroupViews", {"Name"}},
      {"GroupViewsOwner", "GroupViews", {"Owner", "FriendlyName"}},
      {"SessionsKey", "Sessions", {"SessionKey"}},
      {"SessionsExpiry", "Sessions", {"Expires"}},
      {"SessionsLogin", "Sessions", {"Login", "Expires"}},
      {"EventDaysEvent", "EventDays", {"EventID", "EventDay"}},
      {"ObjectEventsEvent", "ObjectEvents", {"EventID"}},
      {"ObjectEventsObject", "ObjectEvents", {"ObjectID"}},
      {"CalendarObjectsName", "CalendarObjects", {"ResourceName"}},
      {"CalendarObjectsUid", "CalendarObjects", {"UID"}},
      {"CalendarChangesMoment", "CalendarChanges", {"Moment"}},
      {"CalendarChangesCalendar", "CalendarChanges", {"Calendar", "Moment"}},
      {"AppPasswordsLogin", "AppPasswords", {"Login"}},
      {"AppPasswordsDigest", "AppPasswords", {"Digest"}},
      {"SecretLinksLogin", "SecretLinks", {"Login"}},
      {"SecretLinksDigest", "SecretLinks", {"Digest"}},
      {"DeviceSettingsLogin", "DeviceSettings", {"Login"}},
  };
  return kIndexes;
}

bool IsPossible(const Index& index, const dialect::Catalogue& catalogue) {
  const dialect::Table* table = catalogue.Find(index.Table);
  if (table == nullptr) return false;
  const auto isThere = [table](std::string_view column) { return table->Find(column) != nullptr; };
  if (index.Rows == IndexedRows::kRepeating && !isThere(kKindColumn)) return false;
  return std::all_of(index.Columns.begin(), index.Columns.end(), isThere) &&
         std::all_of(index.Covered.begin(), index.Covered.end(), isThere);
}

std::string ComparableColumn(const dialect::Table& table, std::string_view name,
                             const dialect::EngineSql& engine) {
  const dialect::Column& column = *table.Find(name);
  return engine.Comparable(dialect::Quoted(column.Name), column.Type);
}

}  // namespace

std::vector<const Index*> PossibleIndexes(const dialect::Catalogue& catalogue) {
  std::vector<const Index*> possible;
  for (const Index& index : Indexes()) {
    if (IsPossible(index, catalogue)) possible.push_back(&index);
  }
  return possible;
}

std::vector<const Index*> MissingIndexes(const dialect::Catalogue& catalogue,
                                         std::span<const std::string> existing) {
  std::vector<const Index*> missing = PossibleIndexes(catalogue);
  std::erase_if(missing, [existing](const Index* index) {
    return std::any_of(existing.begin(), existing.end(),
                       [index](const std::string& name) { return dialect::SameName(name, index->Name); });
  });
  return missing;
}

std::string CreationOf(const Index& index, const dialect::Table& table, const dialect::EngineSql& engine) {
  std::vector<std::string> keys;
  keys.reserve(index.Columns.size());
  for (const std::string_view column : index.Columns)
    keys.push_back(engine.SortKey(ComparableColumn(table, column, engine), table.Find(column)->Type, false));
  std::vector<std::string> covered;
  covered.reserve(index.Covered.size());
  for (const std::string_view column : index.Covered)
    covered.push_back(dialect::Quoted(table.Find(column)->Name));
  std::string sql = "CREATE INDEX IF NOT EXISTS " + dialect::Quoted(index.Name) + " ON " +
                    dialect::Quoted(table.Name) + engine.IndexColumns(keys, covered);
  if (index.Rows == IndexedRows::kNotNull)
    sql += " WHERE " + ComparableColumn(table, index.Columns.front(), engine) + " IS NOT NULL";
  if (index.Rows == IndexedRows::kRepeating) {
    sql += " WHERE " + ComparableColumn(table, kKindColumn, engine) + " <> " +
           engine.Fixed(std::string_view("none"), dialect::ColumnType::kText, dialect::LiteralUse::kCompared);
  }
  return sql;
}

}  // namespace orlune::schema
