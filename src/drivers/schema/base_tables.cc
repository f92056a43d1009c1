#include "drivers/schema/base_tables.h"

#include <string_view>
#include <utility>

namespace orlune::schema {

using dialect::ColumnType;

namespace {

BaseColumn Define(std::string_view name, ColumnType type, int length = 0,
                  dialect::StoredValue defaultValue = {}) {
  return {{{std::string(name), type}, length, false}, defaultValue};
}
BaseColumn Number(std::string_view name, std::int64_t defaultValue) {
  return Define(name, ColumnType::kLong, 0, defaultValue);
}
BaseColumn List(std::string_view name) {
  return Define(name, ColumnType::kMemo, 0, std::string_view());
}

}  // namespace

const std::vector<BaseTable>& BaseTables() {
  static const std::vector<BaseTable> kTables{
      {"Calendars",
       {Define("CalendarID", ColumnType::kCounter), Define("Name", ColumnType::kText, 50),
        Define("FriendlyName", ColumnType::kText, 255), Define("Password", ColumnType::kText, 255),
        Define("IsGroup", ColumnType::kYesNo), List("MemberOfGroups"), List("AdminOfGroups"),
        Number("DayBegin", 8), Number("DayEnd", 18),
        Define("StartMode", ColumnType::kText, 50, std::string_view("month")), Number("StyleSheet", 1),
        Define("MondayFirst", ColumnType::kYesNo, 0, std::int64_t{1})}},
      {"Events",
       {Define("EventID", ColumnType::kCounter), Define("EventName", ColumnType::kText, 255),
        Define("Owner", ColumnType::kText, 50), Define("Type", ColumnType::kText, 50),
        Define("BeginDate", ColumnType::kDate), Define("EndDate", ColumnType::kDate),
        Define("BeginTime", ColumnType::kTime), Define("EndTime", ColumnType::kTime),
        Define("RepeatWeekday", ColumnType::kText, 50), Define("RepeatFrequency", ColumnType::kText, 50),
        Define("RepeatDay", ColumnType::kText, 255), Define("RepeatWeekends", ColumnType::kText, 50),
        Define("Comments", ColumnType::kMemo), Define("Private", ColumnType::kYesNo),
        Define("SuggestState", ColumnType::kText, 50), Define("SuggID", ColumnType::kText, 50)}},
      {"Messages",
       {Define("MessageID", ColumnType::kCounter), Define("Sender", ColumnType::kText, 50),
        Define("Recipient", ColumnType::kText, 50), Define("SentDate", ColumnType::kDateTime),
        Define("Subject", ColumnType::kText, 255), Define("Content", ColumnType::kMemo),
        Define("Viewed", ColumnType::kYesNo), Define("Suggestion", ColumnType::kText, 50)}},
      {"StyleSheets",
       {Define("SheetID", ColumnType::kCounter), Define("SheetName", ColumnType::kText, 50),
        Define("SheetFile", ColumnType::kText, 255)}},
  };
  return kTables;
}

std::string CreationOf(const BaseTable& table, const dialect::EngineSql& engine) {
  std::string columns;
  for (const BaseColumn& column : table.Columns) {
    if (!columns.empty()) columns += ", ";
    columns += engine.Declare(column.Definition, column.Default);
  }
  return "CREATE TABLE " + dialect::Quoted(table.Name) + " (" + columns + ")";
}

}  // namespace orlune::schema
