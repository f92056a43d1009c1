#include "commands/current_tables.h"

#include <array>
#include <string>
#include <utility>

#include "drivers/schema/base_tables.h"

namespace orlune {
namespace {

using access_sql::ColumnType;

struct ColumnOfTable {
  std::string_view Table;
  std::string_view Name;
  ColumnType Type;
};

/// What the upgrade adds, whole tables by their columns.
constexpr std::array<ColumnOfTable, 15> kAdditions{{
    {"Calendars", "ClockMode", ColumnType::kLong},
    {"Calendars", "IsHidden", ColumnType::kYesNo},
    {"Calendars", "FirstDayOfWeek", ColumnType::kLong},
    {"Calendars", "Weekend", ColumnType::kText},
    {"Events", "EventType", ColumnType::kText},
    {"GroupViews", "GroupID", ColumnType::kCounter},
    {"GroupViews", "FriendlyName", ColumnType::kText},
    {"GroupViews", "Name", ColumnType::kText},
    {"GroupViews", "Owner", ColumnType::kText},
    {"GroupViews", "Calendars", ColumnType::kText},
    {"GroupViews", "BackGround", ColumnType::kText},
    {"GroupViews", "ForeGround", ColumnType::kText},
    {"EventTypes", "TypeID", ColumnType::kCounter},
    {"EventTypes", "TypeName", ColumnType::kText},
    {"EventTypes", "FileName", ColumnType::kText},
}};

/// Taken over into `FirstDayOfWeek` and dropped.
constexpr std::string_view kDropped = "MondayFirst";

void Add(access_sql::Catalogue& catalogue, const ColumnOfTable& addition) {
  access_sql::Table* holder = nullptr;
  for (access_sql::Table& table : catalogue.Tables) {
    if (table.Name == addition.Table) holder = &table;
  }
  if (holder == nullptr) {
    catalogue.Tables.push_back({std::string(addition.Table), {}});
    holder = &catalogue.Tables.back();
  }
  holder->Columns.push_back({std::string(addition.Name), addition.Type});
}

}  // namespace

access_sql::Catalogue TablesInForm(SchemaForm form) {
  access_sql::Catalogue catalogue;
  for (const schema::BaseTable& base : schema::BaseTables()) {
    access_sql::Table table{base.Name, {}};
    for (const schema::BaseColumn& column : base.Columns) {
      const access_sql::Column& defined = column.Definition.Defined;
      if (form == SchemaForm::kBase || defined.Name != kDropped) table.Columns.push_back(defined);
    }
    catalogue.Tables.push_back(std::move(table));
  }
  if (form == SchemaForm::kCurrent) {
    for (const ColumnOfTable& addition : kAdditions) Add(catalogue, addition);
  }
  return catalogue;
}

bool IsAddedByUpgrade(std::string_view table, std::string_view column) {
  const access_sql::Catalogue base = TablesInForm(SchemaForm::kBase);
  const access_sql::Table* found = base.Find(table);
  return found == nullptr || (!column.empty() && found->Find(column) == nullptr);
}

}  // namespace orlune
