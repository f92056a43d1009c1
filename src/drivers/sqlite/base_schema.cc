#include "drivers/sqlite/base_schema.h"

#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "drivers/access_sql/engine_sql.h"
#include "drivers/sqlite/column_declaration.h"
#include "drivers/sqlite/handles.h"
#include "platform/database.h"

namespace orlune {

namespace {

using access_sql::ColumnType;

struct BaseColumn {
  std::string_view Name;
  ColumnType Type;
  int Length = 0;
  std::string_view Default{};  ///< in SQL
};

struct BaseTable {
  std::string_view Name;
  std::vector<BaseColumn> Columns;
};

std::vector<BaseTable> BaseTables() {
  return {
      {"Calendars",
       {{"CalendarID", ColumnType::kCounter},
        {"Name", ColumnType::kText, 50},
        {"FriendlyName", ColumnType::kText, 255},
        {"Password", ColumnType::kText, 255},
        {"IsGroup", ColumnType::kYesNo},
        {"MemberOfGroups", ColumnType::kMemo, 0, "''"},
        {"AdminOfGroups", ColumnType::kMemo, 0, "''"},
        {"DayBegin", ColumnType::kLong, 0, "8"},
        {"DayEnd", ColumnType::kLong, 0, "18"},
        {"StartMode", ColumnType::kText, 50, "'month'"},
        {"StyleSheet", ColumnType::kLong, 0, "1"},
        {"MondayFirst", ColumnType::kYesNo, 0, "1"}}},
      {"Events",
       {{"EventID", ColumnType::kCounter},
        {"EventName", ColumnType::kText, 255},
        {"Owner", ColumnType::kText, 50},
        {"Type", ColumnType::kText, 50},
        {"BeginDate", ColumnType::kDate},
        {"EndDate", ColumnType::kDate},
        {"BeginTime", ColumnType::kTime},
        {"EndTime", ColumnType::kTime},
        {"RepeatWeekday", ColumnType::kText, 50},
        {"RepeatFrequency", ColumnType::kText, 50},
        {"RepeatDay", ColumnType::kText, 255},
        {"RepeatWeekends", ColumnType::kText, 50},
        {"Comments", ColumnType::kMemo},
        {"Private", ColumnType::kYesNo},
        {"SuggestState", ColumnType::kText, 50},
        {"SuggID", ColumnType::kText, 50}}},
      {"Messages",
       {{"MessageID", ColumnType::kCounter},
        {"Sender", ColumnType::kText, 50},
        {"Recipient", ColumnType::kText, 50},
        {"SentDate", ColumnType::kDateTime},
        {"Subject", ColumnType::kText, 255},
        {"Content", ColumnType::kMemo},
        {"Viewed", ColumnType::kYesNo},
        {"Suggestion", ColumnType::kText, 50}}},
      {"StyleSheets",
       {{"SheetID", ColumnType::kCounter},
        {"SheetName", ColumnType::kText, 50},
        {"SheetFile", ColumnType::kText, 255}}},
  };
}

std::string Declare(const BaseColumn& column) {
  std::string declaration =
      sqlite::DeclareColumn({{std::string(column.Name), column.Type}, column.Length, false});
  if (column.Default.empty()) return declaration;
  constexpr std::string_view kNo = " DEFAULT 0";
  if (declaration.ends_with(kNo)) declaration.resize(declaration.size() - kNo.size());
  return declaration.append(" DEFAULT ").append(column.Default);
}

void CreateTables(sqlite3* database) {
  for (const BaseTable& table : BaseTables()) {
    std::string columns;
    for (const BaseColumn& column : table.Columns) {
      if (!columns.empty()) columns += ", ";
      columns += Declare(column);
    }
    sqlite::Run(database, ("CREATE TABLE " + access_sql::Quoted(table.Name) + " (" + columns + ")").c_str());
  }
}

}  // namespace

void CreateBaseDatabase(const std::filesystem::path& file) {
  if (std::filesystem::exists(file)) throw DatabaseError("the file " + file.string() + " exists");
  std::filesystem::path unfinished = file;
  unfinished += ".unfinished";
  std::error_code ignored;
  std::filesystem::remove(unfinished, ignored);
  try {
    CreateTables(sqlite::CreateEmpty(unfinished).get());
    std::filesystem::rename(unfinished, file);
  } catch (const std::exception& error) {
    std::filesystem::remove(unfinished, ignored);
    throw DatabaseError("cannot create " + file.string() + ": " + error.what());
  }
}

}  // namespace orlune
