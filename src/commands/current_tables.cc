#include "commands/current_tables.h"

#include <array>
#include <string>
#include <utility>

#include "drivers/schema/base_tables.h"

namespace orlune {
namespace {

using dialect::ColumnType;

struct ColumnOfTable {
  std::string_view Table;
  std::string_view Name;
  ColumnType Type;
};

/// What the upgrade adds; of a new table, all columns.
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

constexpr std::array<ColumnOfTable, 41> kSharingColumns{{
    {"EventDays", "DayID", ColumnType::kCounter},
    {"EventDays", "EventID", ColumnType::kLong},
    {"EventDays", "EventDay", ColumnType::kDateTime},
    {"EventDays", "Role", ColumnType::kText},
    {"CalendarObjects", "ObjectID", ColumnType::kCounter},
    {"CalendarObjects", "ResourceName", ColumnType::kText},
    {"CalendarObjects", "UID", ColumnType::kText},
    {"CalendarObjects", "ObjectText", ColumnType::kMemo},
    {"CalendarObjects", "RowsDigest", ColumnType::kText},
    {"CalendarObjects", "ListedUntil", ColumnType::kDateTime},
    {"ObjectEvents", "ObjectEventID", ColumnType::kCounter},
    {"ObjectEvents", "ObjectID", ColumnType::kLong},
    {"ObjectEvents", "EventID", ColumnType::kLong},
    {"ObjectEvents", "Place", ColumnType::kLong},
    {"CalendarChanges", "ChangeID", ColumnType::kCounter},
    {"CalendarChanges", "Calendar", ColumnType::kText},
    {"CalendarChanges", "ResourceName", ColumnType::kText},
    {"CalendarChanges", "Moment", ColumnType::kLong},
    {"CalendarLogs", "LogID", ColumnType::kCounter},
    {"CalendarLogs", "LogName", ColumnType::kText},
    {"CalendarLogs", "TrimmedTo", ColumnType::kLong},
    {"ExchangeIdentity", "IdentityID", ColumnType::kCounter},
    {"ExchangeIdentity", "DatabaseName", ColumnType::kText},
    {"AppPasswords", "PasswordID", ColumnType::kCounter},
    {"AppPasswords", "Login", ColumnType::kText},
    {"AppPasswords", "Label", ColumnType::kText},
    {"AppPasswords", "Digest", ColumnType::kText},
    {"AppPasswords", "Created", ColumnType::kDateTime},
    {"AppPasswords", "LastUsed", ColumnType::kDateTime},
    {"SecretLinks", "LinkID", ColumnType::kCounter},
    {"SecretLinks", "Login", ColumnType::kText},
    {"SecretLinks", "Calendar", ColumnType::kText},
    {"SecretLinks", "Label", ColumnType::kText},
    {"SecretLinks", "Digest", ColumnType::kText},
    {"SecretLinks", "Created", ColumnType::kDateTime},
    {"SecretLinks", "LastUsed", ColumnType::kDateTime},
    {"DeviceSettings", "SettingID", ColumnType::kCounter},
    {"DeviceSettings", "Login", ColumnType::kText},
    {"DeviceSettings", "Calendar", ColumnType::kText},
    {"DeviceSettings", "Colour", ColumnType::kText},
    {"DeviceSettings", "Position", ColumnType::kText},
}};

/// Converted to `FirstDayOfWeek` and dropped.
constexpr std::string_view kDropped = "MondayFirst";

void Add(dialect::Catalogue& catalogue, const ColumnOfTable& addition) {
  dialect::Table* holder = nullptr;
  for (dialect::Table& table : catalogue.Tables) {
    if (table.Name == addition.Table) holder = &table;
  }
  if (holder == nullptr) {
    catalogue.Tables.push_back({std::string(addition.Table), {}});
    holder = &catalogue.Tables.back();
  }
  holder->Columns.push_back({std::string(addition.Name), addition.Type});
}

}  // namespace

dialect::Catalogue TablesInForm(SchemaForm form) {
  dialect::Catalogue catalogue;
  for (const schema::BaseTable& base : schema::BaseTables()) {
    dialect::Table table{base.Name, {}};
    for (const schema::BaseColumn& column : base.Columns) {
      const dialect::Column& defined = column.Definition.Defined;
      if (form == SchemaForm::kBase || defined.Name != kDropped) table.Columns.push_back(defined);
    }
    catalogue.Tables.push_back(std::move(table));
  }
  if (form == SchemaForm::kCurrent) {
    for (const ColumnOfTable& addition : kAdditions) Add(catalogue, addition);
  }
  return catalogue;
}

dialect::Catalogue SharingTables() {
  dialect::Catalogue catalogue;
  for (const ColumnOfTable& column : kSharingColumns) Add(catalogue, column);
  return catalogue;
}

bool IsOfOneDatabase(std::string_view sharingTable) {
  return dialect::SameName(sharingTable, "CalendarChanges") ||
         dialect::SameName(sharingTable, "CalendarLogs");
}

bool IsAddedByUpgrade(std::string_view table, std::string_view column) {
  const dialect::Catalogue base = TablesInForm(SchemaForm::kBase);
  const dialect::Table* found = base.Find(table);
  return found == nullptr || (!column.empty() && found->Find(column) == nullptr);
}

}  // namespace orlune
