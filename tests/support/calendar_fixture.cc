#include "support/calendar_fixture.h"

#include <fstream>

#include "base/date_text.h"
#include "base/dates.h"
#include "drivers/icu/icu_regional_settings.h"
#include "store/field.h"
#include "store/schema_upgrade.h"

namespace orlune::testing {
namespace {

FakeHost::Fields ParseQuery(std::string_view query) {
  FakeHost::Fields fields;
  while (!query.empty()) {
    const std::string_view pair = query.substr(0, query.find('&'));
    query.remove_prefix(std::min(query.size(), pair.size() + 1));
    const std::size_t equals = pair.find('=');
    fields[std::string(pair.substr(0, equals))] = pair.substr(std::min(pair.size(), equals + 1));
  }
  return fields;
}

std::string IsoDate(Date date) {
  RegionalSettings iso{};
  iso.ShortDateOrder = {DateField::kYear, DateField::kMonth, DateField::kDay};
  iso.ShortDateSeparator = '-';
  iso.PadsDay = iso.PadsMonth = true;
  return FormatShortDate(iso, date);
}

std::string FieldText(const Value& value) {
  if (const auto number = NumberOf(value)) return std::to_string(*number);
  if (const auto date = DateOf(value)) return IsoDate(*date);
  if (const auto time = TimeOf(value)) return FormatTime("Hh:Nn", *time);
  if (std::holds_alternative<bool>(value)) return YesNoOf(value) ? "yes" : "no";
  return IsNull(value) ? "Null" : std::string(TextOf(value));
}

}  // namespace

CalendarFixture::CalendarFixture()
    : regional_(LoadRegionalSettings("en_US")),
      ownedDriver_(place_.MakeDriver(regional_)),
      driver_(*ownedDriver_),
      surroundings_{clock_, driver_, regional_, languages_, languagePacks_, passwords_, logins_},
      databasePath_(place_.Path()) {
  host_.SiteFolder = folder_.Path();
  std::filesystem::create_directory(folder_.Path() / "css");
  std::ofstream(folder_.Path() / "css" / "dark.css") << "BODY {}";

  place_.CreateTables();
  UpgradeSchema(*driver_.Open(databasePath_));
  Run(Statement("INSERT INTO StyleSheets (SheetName, SheetFile) VALUES ('Dark', 'dark.css')"));
  for (const auto& [name, friendlyName] :
       {std::pair{"default", "Everybody"}, {"sales", "Sales"}, {"staff", "Staff"}}) {
    Run(Statement(
        "INSERT INTO Calendars (Name, FriendlyName, IsGroup, IsHidden) VALUES ('{}', '{}', yes, no)", name,
        friendlyName));
  }
  const SqlLiteral user(
      "INSERT INTO Calendars (Name, FriendlyName, Password, MemberOfGroups, AdminOfGroups, StyleSheet, "
      "DayBegin, "
      "DayEnd, StartMode, ClockMode, FirstDayOfWeek, Weekend, IsHidden) VALUES ");
  Run(Statement("{}('admin', 'Administrator', 'demo1', '', '', 1, 8, 17, 'month', 24, 2, '1, 7', yes)",
                user));
  Run(Statement(
      "{}('anna', 'Anna A', 'secret', 'sales, staff', 'sales', 1, 8, 17, 'week', 24, 2, '1, 7', no)", user));
  Run(Statement("{}('ben', 'Ben B', Null, '', '', 1, 9, 16, 'day', 12, 1, '1, 7', yes)", user));
}

const Answer& CalendarFixture::Send(const std::string& query, FakeHost::Fields form) {
  host_.StartRequest(ParseQuery(query), std::move(form), query);
  Orlune page(surroundings_);
  page.DBPath(databasePath_);
  configure_(page);
  page.OnStartPage(host_.Context());
  page.Execute();
  return host_.LastAnswer();
}

void CalendarFixture::LogIn(const std::string& name, const std::string& password) {
  Post("p=l", {{"Name", name}, {"Passwd", password}});
}

void CalendarFixture::Run(const Statement& statement) {
  driver_.Open(databasePath_)->Execute(statement);
}

std::string CalendarFixture::Read(const Statement& query) {
  const auto connection = driver_.Open(databasePath_);
  const auto rows = connection->Query(query);
  return rows->Next() ? FieldText(rows->Get(0)) : "(none)";
}

std::vector<std::string> CalendarFixture::ReadRows(const Statement& query,
                                                   const std::vector<std::string>& columns) {
  const auto connection = driver_.Open(databasePath_);
  const auto rows = connection->Query(query);
  std::vector<std::string> texts;
  while (rows->Next()) {
    std::string& row = texts.emplace_back();
    for (const std::string& column : columns) {
      if (!row.empty()) row += "|";
      row += FieldText(rows->Get(rows->Column(column)));
    }
  }
  return texts;
}

int CalendarFixture::AddEvent(std::string_view owner, std::string_view name, SqlLiteral columns,
                              SqlLiteral values) {
  Run(Statement("INSERT INTO Events (Owner, EventName, {}) VALUES ('{}', '{}', {})", columns, owner, name,
                values));
  return std::stoi(Read(Statement("SELECT TOP 1 EventID FROM Events ORDER BY EventID DESC")));
}

}  // namespace orlune::testing
