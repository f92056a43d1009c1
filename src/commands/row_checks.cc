#include "commands/row_checks.h"

#include <set>
#include <string>
#include <string_view>
#include <unordered_set>

#include <fmt/format.h>

#include "base/lists.h"
#include "base/utf8.h"
#include "commands/table_scan.h"
#include "drivers/unicode/case_folding.h"

namespace orlune {
namespace {

constexpr FindingKind kUnreadable{
    "Unreadable fields",
    "pages show them as empty; enter them again, and let no other program write to the database"};
constexpr FindingKind kNotUtf8{"Invalid UTF-8",
                               "enter the texts again, and let no other program write to the database"};
constexpr FindingKind kGroupUnknown{"Unknown groups in lists of groups",
                                    "save the user again in Administration"};
constexpr FindingKind kGroupIsUser{"Users in lists of groups", "save the user again in Administration"};
constexpr FindingKind kStyleSheet{"Users of an unknown colour scheme, who lose all their preferences",
                                  "let them choose another one"};
constexpr FindingKind kRecipient{"Messages to unknown recipients",
                                 "create a user of that name, or leave them: nobody sees them"};
constexpr FindingKind kWithoutSentDate{"Messages without a date",
                                       "leave them, or let the recipients delete them"};
constexpr FindingKind kViewOwner{"Group views of unknown owners",
                                 "create a user of that name, or leave them: nobody sees them"};
constexpr FindingKind kViewName{"Missing or duplicate names of group views",
                                "pages show only one of them; let the owner create the other one again"};
constexpr FindingKind kViewColours{"Group views without one colour for each calendar",
                                   "let the owner save the view again"};
constexpr FindingKind kViewCalendars{"Unknown calendars in group views", "their owners can remove them",
                                     true};

std::string Quote(std::string_view text) {
  return fmt::format("\"{}\"", text);
}

void CheckGroupList(std::string_view list, std::string_view column, const std::string& place,
                    const CalendarNames& names, Findings& findings) {
  ForEachItem(list, [&](std::string_view item) {
    if (item.empty() || names.IsGroup(item)) return;
    findings.Add(names.Contains(item) ? kGroupIsUser : kGroupUnknown,
                 fmt::format("{}: \"{}\" in {}", place, item, column));
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
      const dialect::Column& column = table.Columns[i];
      const auto place = [&] { return fmt::format("{} {}: {}", table.Name, row.Number(), column.Name); };
      if (const auto* unreadable = std::get_if<Unreadable>(&field)) {
        findings.Add(kUnreadable, fmt::format("{} is \"{}\", not {}", place(), RepairUtf8(unreadable->Stored),
                                              DescribeType(column.Type)));
      } else if (const auto* text = std::get_if<std::string>(&field)) {
        if (RepairUtf8(*text) != *text) findings.Add(kNotUtf8, place());
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
    const std::string place = fmt::format("message {}", row.Number());
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
    if (row.Text(name).empty() || !viewNames.insert(unicode::FoldCase(row.Text(name))).second) {
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
