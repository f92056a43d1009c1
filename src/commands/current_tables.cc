#include "commands/current_tables.h"

#include <algorithm>
#include <string>
#include <vector>

namespace orlune {
namespace {

using access_sql::ColumnType;

enum class Life { kAlways, kUntilUpgrade, kSinceUpgrade };

struct KnownColumn {
  std::string_view Name;
  ColumnType Type;
  Life Lives = Life::kAlways;
};

struct KnownTable {
  std::string_view Name;
  std::vector<KnownColumn> Columns;
};

const std::vector<KnownTable>& KnownTables() {
  using enum ColumnType;
  static const std::vector<KnownTable> kTables{
      {"Calendars",
       {{"CalendarID", kCounter},
        {"Name", kText},
        {"FriendlyName", kText},
        {"Password", kText},
        {"IsGroup", kYesNo},
        {"MemberOfGroups", kMemo},
        {"AdminOfGroups", kMemo},
        {"DayBegin", kLong},
        {"DayEnd", kLong},
        {"StartMode", kText},
        {"StyleSheet", kLong},
        {"MondayFirst", kYesNo, Life::kUntilUpgrade},
        {"ClockMode", kLong, Life::kSinceUpgrade},
        {"IsHidden", kYesNo, Life::kSinceUpgrade},
        {"FirstDayOfWeek", kLong, Life::kSinceUpgrade},
        {"Weekend", kText, Life::kSinceUpgrade}}},
      {"StyleSheets", {{"SheetID", kCounter}, {"SheetName", kText}, {"SheetFile", kText}}},
      {"EventTypes",
       {{"TypeID", kCounter, Life::kSinceUpgrade},
        {"TypeName", kText, Life::kSinceUpgrade},
        {"FileName", kText, Life::kSinceUpgrade}}},
      {"GroupViews",
       {{"GroupID", kCounter, Life::kSinceUpgrade},
        {"FriendlyName", kText, Life::kSinceUpgrade},
        {"Name", kText, Life::kSinceUpgrade},
        {"Owner", kText, Life::kSinceUpgrade},
        {"Calendars", kText, Life::kSinceUpgrade},
        {"BackGround", kText, Life::kSinceUpgrade},
        {"ForeGround", kText, Life::kSinceUpgrade}}},
      {"Messages",
       {{"MessageID", kCounter},
        {"Sender", kText},
        {"Recipient", kText},
        {"SentDate", kDateTime},
        {"Subject", kText},
        {"Content", kMemo},
        {"Viewed", kYesNo},
        {"Suggestion", kText}}},
      {"Events",
       {{"EventID", kCounter},
        {"EventName", kText},
        {"Owner", kText},
        {"Type", kText},
        {"BeginDate", kDate},
        {"EndDate", kDate},
        {"BeginTime", kTime},
        {"EndTime", kTime},
        {"RepeatWeekday", kText},
        {"RepeatFrequency", kText},
        {"RepeatDay", kText},
        {"RepeatWeekends", kText},
        {"Comments", kMemo},
        {"Private", kYesNo},
        {"SuggestState", kText},
        {"SuggID", kText},
        {"EventType", kText, Life::kSinceUpgrade}}},
  };
  return kTables;
}

}  // namespace

access_sql::Catalogue TablesInForm(SchemaForm form) {
  const Life absent = form == SchemaForm::kBase ? Life::kSinceUpgrade : Life::kUntilUpgrade;
  access_sql::Catalogue catalogue;
  for (const KnownTable& known : KnownTables()) {
    access_sql::Table table{std::string(known.Name), {}};
    for (const KnownColumn& column : known.Columns) {
      if (column.Lives != absent) table.Columns.push_back({std::string(column.Name), column.Type});
    }
    if (!table.Columns.empty()) catalogue.Tables.push_back(std::move(table));
  }
  return catalogue;
}

bool IsAddedByUpgrade(std::string_view table, std::string_view column) {
  const access_sql::Catalogue base = TablesInForm(SchemaForm::kBase);
  const access_sql::Table* found = base.Find(table);
  return found == nullptr || found->Find(column) == nullptr;
}

}  // namespace orlune
