#include "demo/demo_company.h"

#include "base/text.h"
#include "demo/demo_company_events.h"
#include "demo/demo_company_messages.h"
#include "demo/demo_company_people.h"
#include "demo/demo_company_rows.h"
#include "store/database_access.h"

namespace orlune {
namespace {

using demo::Group;
using demo::GroupView;
using demo::Person;

Statement Number(int number) {
  return Statement("{}", number);
}
Statement YesNo(bool value) {
  return SqlValue(value ? "*yes" : "*no");
}

void AddPerson(Connection& database, const Person& person, std::string_view password) {
  const ColumnValue values[] = {
      {"FriendlyName", SqlValue(ReplaceAll(person.FriendlyName, "'", "&#39;"))},
      {"Name", SqlValue(person.Name)},
      {"Password", SqlValue(password)},
      {"IsGroup", YesNo(false)},
      {"IsHidden", YesNo(person.IsHidden)},
      {"MemberOfGroups", SqlValue(person.Groups)},
      {"AdminOfGroups", SqlValue(person.AdminOfGroups)},
      {"StartMode", SqlValue(person.StartMode)},
      {"ClockMode", Number(person.ClockMode)},
      {"FirstDayOfWeek", Number(person.FirstDayOfWeek)},
      {"Weekend", SqlValue(person.Weekend)},
      {"DayBegin", Number(person.DayBegin)},
      {"DayEnd", Number(person.DayEnd)},
      {"StyleSheet", Number(person.StyleSheet)},
  };
  database.Execute(BuildSql(SqlMode::kInsert, "Calendars", values));
}

void AddGroup(Connection& database, const Group& group) {
  const ColumnValue values[] = {
      {"FriendlyName", SqlValue(group.FriendlyName)},
      {"Name", SqlValue(group.Name)},
      {"IsHidden", YesNo(group.IsHidden)},
      {"IsGroup", YesNo(true)},
      {"ClockMode", Number(24)},
      {"FirstDayOfWeek", Number(2)},
      {"Weekend", SqlValue("1, 7")},
  };
  database.Execute(BuildSql(SqlMode::kInsert, "Calendars", values));
}

void AddGroupView(Connection& database, const GroupView& view) {
  const ColumnValue values[] = {
      {"Owner", SqlValue(view.Owner)},
      {"Name", SqlValue(view.Name)},
      {"FriendlyName", SqlValue(view.FriendlyName)},
      {"Calendars", SqlValue(view.Calendars)},
      {"BackGround", SqlValue(view.BackGround)},
      {"ForeGround", SqlValue(view.ForeGround)},
  };
  database.Execute(BuildSql(SqlMode::kInsert, "GroupViews", values));
}

}  // namespace

void AddDemoCompany(Connection& database, const RegionalSettings& regional, Date today,
                    std::string_view password) {
  for (const Person& person : demo::kPeople) AddPerson(database, person, password);
  for (const Group& group : demo::kGroups) AddGroup(database, group);
  for (const GroupView& view : demo::kGroupViews) AddGroupView(database, view);
  const demo::RowWriter rows(database, regional);
  demo::AddEvents(rows, today);
  demo::AddMessages(rows, today);
  demo::AddSuggestions(rows, today);
}

}  // namespace orlune
