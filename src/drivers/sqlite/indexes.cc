#include "drivers/sqlite/indexes.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "drivers/sqlite/handles.h"
#include "platform/database.h"

namespace orlune::sqlite {

namespace {

struct Index {
  std::string_view Name;
  std::string_view Table;
  std::array<std::string_view, 4> Columns;  ///< the last ones may be empty
  std::string_view Where;
};

/// The queries of one page, whatever the number of rows, read through these, and so does what renaming a user
/// changes.
constexpr std::array<Index, 11> kIndexes{{
    {"CalendarsName", "Calendars", {"Name"}, ""},
    {"CalendarsChoice", "Calendars", {"IsGroup", "FriendlyName", "Name", "IsHidden"}, ""},
    {"EventsOwnerBegin", "Events", {"Owner", "BeginDate"}, ""},
    {"EventsRepeating", "Events", {"Owner", "EndDate", "BeginDate"}, "Type <> 'none'"},
    {"EventsSuggID", "Events", {"SuggID"}, "SuggID IS NOT NULL"},
    {"EventsSuggestState", "Events", {"SuggestState"}, "SuggestState IS NOT NULL"},
    {"MessagesUnread", "Messages", {"Recipient", "Viewed"}, ""},
    {"MessagesSent", "Messages", {"Recipient", "SentDate"}, ""},
    {"MessagesSender", "Messages", {"Sender"}, ""},
    {"GroupViewsName", "GroupViews", {"Name"}, ""},
    {"GroupViewsOwner", "GroupViews", {"Owner", "FriendlyName"}, ""},
}};

std::string ColumnList(const Index& index) {
  std::string list;
  for (const std::string_view column : index.Columns) {
    if (column.empty()) break;
    if (!list.empty()) list += ", ";
    list += column;
  }
  return list;
}

bool CanExist(const Index& index, const access_sql::Catalogue& catalogue) {
  const access_sql::Table* table = catalogue.Find(index.Table);
  if (table == nullptr) return false;
  return std::all_of(index.Columns.begin(), index.Columns.end(), [table](std::string_view column) {
    return column.empty() || table->Find(column) != nullptr;
  });
}

std::vector<const Index*> MissingIndexes(sqlite3* database, const access_sql::Catalogue& catalogue) {
  std::vector<std::string> existing;
  const auto row = Prepare(database, "SELECT name FROM sqlite_schema WHERE type = 'index'");
  while (Step(row.get())) existing.emplace_back(ColumnText(row.get(), 0));
  std::vector<const Index*> missing;
  for (const Index& index : kIndexes) {
    const bool exists = std::find(existing.begin(), existing.end(), index.Name) != existing.end();
    if (!exists && CanExist(index, catalogue)) missing.push_back(&index);
  }
  return missing;
}

std::string CreationOf(const Index& index) {
  std::string sql = "CREATE INDEX IF NOT EXISTS ";
  sql.append(index.Name)
      .append(" ON ")
      .append(index.Table)
      .append(" (")
      .append(ColumnList(index))
      .append(")");
  if (!index.Where.empty()) sql.append(" WHERE ").append(index.Where);
  return sql;
}

}  // namespace

bool HasAllIndexes(sqlite3* database, const access_sql::Catalogue& catalogue) {
  return MissingIndexes(database, catalogue).empty();
}

std::vector<std::string> NamesOfMissingIndexes(sqlite3* database, const access_sql::Catalogue& catalogue) {
  std::vector<std::string> names;
  for (const Index* index : MissingIndexes(database, catalogue)) names.emplace_back(index->Name);
  return names;
}

void CreateMissingIndexes(sqlite3* database, const access_sql::Catalogue& catalogue) {
  Run(database, "BEGIN IMMEDIATE");
  try {
    for (const Index* index : MissingIndexes(database, catalogue)) Run(database, CreationOf(*index).c_str());
    Run(database, "COMMIT");
  } catch (const DatabaseError&) {
    Run(database, "ROLLBACK");
    throw;
  }
}

void DropIndexes(sqlite3* database) {
  for (const Index& index : kIndexes) {
    Run(database, std::string("DROP INDEX IF EXISTS ").append(index.Name).c_str());
  }
}

}  // namespace orlune::sqlite
