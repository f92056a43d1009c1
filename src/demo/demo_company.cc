#include "demo/demo_company.h"

#include "base/lists.h"
#include "demo/demo_company_events.h"
#include "demo/demo_company_messages.h"
#include "demo/demo_company_people.h"
#include "store/calendar_records.h"
#include "store/calendars.h"
#include "store/group_views.h"
#include "store/transaction.h"

namespace orlune {
namespace {

using demo::Group;
using demo::Person;

void AddPerson(Connection& database, const Person& person, std::string_view password) {
  SaveUser(database, std::nullopt,
           {.FriendlyName = std::string(person.FriendlyName),
            .Name = std::string(person.Name),
            .Password = std::string(password),
            .MemberOfGroups = std::string(person.Groups),
            .AdminOfGroups = std::string(person.AdminOfGroups),
            .IsHidden = person.IsHidden});
  StorePreferences(database, person.Name,
                   {.FirstDayOfWeek = person.FirstDayOfWeek,
                    .Weekend = std::string(person.Weekend),
                    .ClockMode = person.ClockMode,
                    .DayBegin = person.DayBegin,
                    .DayEnd = person.DayEnd,
                    .StartMode = std::string(person.StartMode),
                    .StyleSheet = person.StyleSheet});
}

void AddGroup(Connection& database, const Group& group) {
  CalendarRecord record;
  record.FriendlyName = group.FriendlyName;
  record.Name = group.Name;
  record.IsHidden = group.IsHidden;
  SaveGroup(database, std::nullopt, record);
}

void AddGroupView(Connection& database, const demo::View& view) {
  StoreGroupView(database, {.Id = std::nullopt,
                            .Owner = std::string(view.Owner),
                            .Name = std::string(view.Name),
                            .FriendlyName = std::string(view.FriendlyName),
                            .Members = {SplitList(view.Calendars), SplitList(view.BackGround),
                                        SplitList(view.ForeGround)}});
}

}  // namespace

void AddDemoCompany(Connection& database, const RegionalSettings& regional, Date today,
                    std::string_view password) {
  for (const demo::View& view : demo::kGroupViews) AddGroupView(database, view);
  Transaction everythingElse(database);
  for (const Person& person : demo::kPeople) AddPerson(database, person, password);
  for (const Group& group : demo::kGroups) AddGroup(database, group);
  demo::AddEvents(database, regional, today);
  demo::AddMessages(database, regional, today);
  demo::AddSuggestions(database, regional, today);
  everythingElse.Commit();
}

}  // namespace orlune
