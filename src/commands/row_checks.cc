#include "commands/row_checks.h"

#include <set>
#include <string>
#include <string_view>
#include <unordered_set>

#include "base/lists.h"
#include "base/text.h"
#include "base/utf8.h"
#include "commands/table_scan.h"

namespace orlune {
namespace {

constexpr FindingKind kUnreadable{
    "Fields hold what cannot be read",
    "pages show them as empty; enter them anew, and let no other program write to the database"};
constexpr FindingKind kNotUtf8{"Texts are no UTF-8",
                               "enter them anew, and let no other program write to the database"};
constexpr FindingKind kGroupUnknown{"Lists of groups name groups that are not there",
                                    "save the user anew in Administration"};
constexpr FindingKind kGroupIsUser{"Lists of groups name users", "save the user anew in Administration"};
constexpr FindingKind kStyleSheet{
    "Users have a colour scheme that is not there, and lose all their preferences",
    "let them choose another one"};
constexpr FindingKind kRecipient{"Messages are for recipients that no user has the name of",
                                 "make a user of that name, or leave them: nobody sees them"};
constexpr FindingKind kWithoutSentDate{"Messages have no date",
                                       "leave them, or let the recipients delete them"};
constexpr FindingKind kViewOwner{"Group views belong to nobody",
                                 "make a user of that name, or leave them: nobody sees them"};
constexpr FindingKind kViewName{"Names of group views are missing or there twice, whatever their case",
                                "pages show only one of them; let the owner make the other one anew"};
constexpr FindingKind kViewColours{"Group views have not one colour for each calendar",
                                   "let the owner save the view anew"};
constexpr FindingKind kViewCalendars{"Group views show calendars that are not there",
                                     "their owners can take them out", true};

std::string Quote(std::string_view text) {
  return '"' + std::string(text) + '"';
}

void CheckGroupList(std::string_view list, std::string_view column, const std::string& place,
                    const CalendarNames& names, Findings& findings) {
  ForEachItem(list, [&](std::string_view item) {
    if (item.empty() || names.IsGroup(item)) return;
    findings.Add(names.Contains(item) ? kGroupIsUser : kGroupUnknown,
                 place + ": " + Quote(item) + " in " + std::string(column));
  });
}

std::unordered_set<std::int64_t> NumbersOf(DatabaseMaintenance& database, const dialect::Table* table) {
  std::unordered_set<std::int64_t> numbers;
  if (table == nullptr) return numbers;
  for (TableScan row(database, *table); row.Next();) numbers.insert(row.Number());
  return numbers;
}

std::size_t ItemCount(std::string_view list) {
  std::size_t count = 0;
  ForEachItem(list, [&count](std::string_view) { ++count; });
  return count;
}

}  // namespace

void CheckFields(DatabaseMaintenance& database, const dialect::Table& table, Findings& findings) {
  for (TableScan row(database, table); row.Next();) {
    for (std::size_t i = 0; i < table.Columns.size(); ++i) {
      const StoredField& field = row.Row()[i];
      const auto place = [&] { return table.Name + " " + std::to_string(row.Number()) + ": "; };
      if (const auto* unreadable = std::get_if<Unreadable>(&field)) {
        findings.Add(kUnreadable, place() + table.Columns[i].Name + " is " +
                                      Quote(RepairUtf8(unreadable->Stored)) + ", not " +
                                      std::string(DescribeType(table.Columns[i].Type)));
      } else if (const auto* text = std::get_if<std::string>(&field)) {
        if (RepairUtf8(*text) != *text) findings.Add(kNotUtf8, place() + table.Columns[i].Name);
      }
    }
  }
}

void CheckCalendars(DatabaseMaintenance& database, const dialect::Table& calendars,
                    const dialect::Table* styleSheets, const CalendarNames& names, Findings& findings) {
  const std::unordered_set<std::int64_t> sheets = NumbersOf(database, styleSheets);
  TableScan row(database, calendars);
  const int name = row.Column("Name");
  const int group = row.Column("IsGroup");
  const int memberOf = row.Column("MemberOfGroups");
  const int adminOf = row.Column("AdminOfGroups");
  const int sheet = row.Column("StyleSheet");
  while (row.Next()) {
    const std::string place = "calendar " + Quote(row.Text(name));
    CheckGroupList(row.Text(memberOf), "MemberOfGroups", place, names, findings);
    CheckGroupList(row.Text(adminOf), "AdminOfGroups", place, names, findings);
    if (sheet < 0 || row.YesNo(group)) continue;
    const auto* number = std::get_if<std::int64_t>(&row.Get(sheet));
    if (number == nullptr || !sheets.contains(*number)) {
      findings.Add(kStyleSheet, place + ": " + (number == nullptr ? "none" : std::to_string(*number)));
    }
  }
}

void CheckMessages(DatabaseMaintenance& database, const dialect::Table& messages, const CalendarNames& names,
                   Findings& findings) {
  TableScan row(database, messages);
  const int recipient = row.Column("Recipient");
  const int sent = row.Column("SentDate");
  while (row.Next()) {
    const std::string place = "message " + std::to_string(row.Number());
    if (!names.Contains(row.Text(recipient))) {
      findings.Add(kRecipient, place + " for " + Quote(row.Text(recipient)));
    }
    if (std::holds_alternative<std::monostate>(row.Get(sent))) findings.Add(kWithoutSentDate, place);
  }
}

void CheckGroupViews(DatabaseMaintenance& database, const dialect::Table& groupViews,
                     const CalendarNames& names, Findings& findings) {
  std::set<std::string> viewNames;
  TableScan row(database, groupViews);
  const int name = row.Column("Name");
  const int owner = row.Column("Owner");
  const int calendars = row.Column("Calendars");
  const int background = row.Column("BackGround");
  const int foreground = row.Column("ForeGround");
  while (row.Next()) {
    const std::string place = "group view " + Quote(row.Text(name));
    if (row.Text(name).empty() || !viewNames.insert(ToLower(row.Text(name))).second) {
      findings.Add(kViewName, place);
    }
    if (!names.Contains(row.Text(owner))) findings.Add(kViewOwner, place + " of " + Quote(row.Text(owner)));
    ForEachItem(row.Text(calendars), [&](std::string_view item) {
      if (!item.empty() && !names.Contains(item)) findings.Add(kViewCalendars, place + ": " + Quote(item));
    });
    const std::size_t members = ItemCount(row.Text(calendars));
    if (ItemCount(row.Text(background)) != members || ItemCount(row.Text(foreground)) != members) {
      findings.Add(kViewColours, place);
    }
  }
}

}  // namespace orlune
