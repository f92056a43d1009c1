#include "commands/init.h"

#include <array>
#include <stdexcept>
#include <string_view>

#include "demo/demo_company.h"
#include "drivers/passwords/random_password.h"
#include "store/database_access.h"
#include "store/schema_upgrade.h"

namespace orlune {
namespace {

constexpr std::string_view kDemoPassword = "demo1";

struct NamedFile {
  std::string_view Name;
  std::string_view File;
};

constexpr std::array<NamedFile, 5> kColourSchemes{{
    {"Automatic", "default.css"},
    {"Light", "light.css"},
    {"Dark", "dark.css"},
    {"High Contrast", "contrast.css"},
    {"Nineties", "nineties.css"},
}};

constexpr std::array<NamedFile, 10> kEventTypes{{
    {"Meeting", "type_meeting.gif"},
    {"Phone Call", "type_call.gif"},
    {"Deadline", "type_deadline.gif"},
    {"Travel", "type_travel.gif"},
    {"Training", "type_training.gif"},
    {"Holiday", "type_holiday.gif"},
    {"Birthday", "type_birthday.gif"},
    {"Party", "type_party.gif"},
    {"Sport", "type_sport.gif"},
    {"Doctor", "type_doctor.gif"},
}};

std::string PasswordOf(const InitOptions& options) {
  if (!options.AdminPassword) return options.Demo ? std::string(kDemoPassword) : MakeRandomPassword();
  if (options.AdminPassword->empty() || options.AdminPassword->find(' ') != std::string::npos) {
    throw std::runtime_error("--admin-password: expected a text without blanks that is not empty");
  }
  return *options.AdminPassword;
}

void Insert(Connection& database, SqlLiteral table, std::initializer_list<ColumnValue> values) {
  database.Execute(BuildSql(SqlMode::kInsert, table, values));
}

void AddBaseRows(Connection& database, const std::string& password) {
  Insert(database, "Calendars",
         {{"Name", SqlValue("admin")},
          {"FriendlyName", SqlValue("Administrator")},
          {"Password", SqlValue(password)},
          {"IsGroup", SqlValue("*no")}});
  Insert(database, "Calendars",
         {{"Name", SqlValue("default")},
          {"FriendlyName", SqlValue("Everybody")},
          {"IsGroup", SqlValue("*yes")}});
  for (const NamedFile& scheme : kColourSchemes) {
    Insert(database, "StyleSheets",
           {{"SheetName", SqlValue(scheme.Name)}, {"SheetFile", SqlValue(scheme.File)}});
  }
}

void AddEventTypes(Connection& database) {
  for (const NamedFile& type : kEventTypes) {
    Insert(database, "EventTypes", {{"TypeName", SqlValue(type.Name)}, {"FileName", SqlValue(type.File)}});
  }
}

void Fill(Connection& database, const InitOptions& options, const std::string& password,
          const RegionalSettings& regional) {
  database.Begin();
  AddBaseRows(database, password);
  database.Commit();
  UpgradeSchema(database);
  database.Begin();
  AddEventTypes(database);
  database.Commit();
  if (options.Demo) AddDemoCompany(database, regional, options.Today, kDemoPassword);
}

}  // namespace

std::string InitDatabase(const NamedDatabase& named, const InitOptions& options,
                         const RegionalSettings& regional) {
  std::string password = PasswordOf(options);
  named.Engine.Create(named.Address,
                      [&](Connection& database) { Fill(database, options, password, regional); });
  return password;
}

}  // namespace orlune
