#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "base/lists.h"
#include "base/text.h"
#include "commands/row_checks.h"
#include "commands/table_scan.h"
#include "model/repetition.h"

namespace orlune {
namespace {

constexpr FindingKind kOwner{
    "Events of unknown owners",
    "create a user or group of that name in Administration, or leave them: nobody sees them"};
constexpr FindingKind kBeginDate{"Events without a begin date, which are not shown", "enter them again"};
constexpr FindingKind kRule{"Events with an unreadable repetition, not shown on all their days",
                            "open them by number (?p=e&id=...) and save them again"};
constexpr FindingKind kSuggestion{"Suggestions of a deleted event",
                                  "their owners can delete them; they can no longer be answered", true};

/// The positions of an event's columns.
struct EventColumns {
  explicit EventColumns(const TableScan& row)
      : Owner(row.Column("Owner")),
        Type(row.Column("Type")),
        BeginDate(row.Column("BeginDate")),
        EndDate(row.Column("EndDate")),
        RepeatWeekday(row.Column("RepeatWeekday")),
        RepeatFrequency(row.Column("RepeatFrequency")),
        RepeatDay(row.Column("RepeatDay")),
        RepeatWeekends(row.Column("RepeatWeekends")),
        SuggID(row.Column("SuggID")) {}

  int Owner, Type, BeginDate, EndDate, RepeatWeekday, RepeatFrequency, RepeatDay, RepeatWeekends, SuggID;
};

/// Whether every item is a whole number from 1 to `most`, and there is one.
bool AreNumbers(std::string_view list, int most) {
  bool areNumbers = true;
  ForEachItem(list, [&](std::string_view item) {
    const std::optional<int> number = WholeNumber(item);
    areNumbers = areNumbers && number && *number >= 1 && *number <= most;
  });
  return areNumbers;
}

/// The column that makes the rule of a row unreadable; "" for none.
std::string_view UnreadableRulePart(const TableScan& row, const EventColumns& columns) {
  const auto type = RepetitionOf(row.Text(columns.Type));
  if (!type) return "Type";
  if (type == Repetition::kNone) return "";
  if (!std::holds_alternative<Date>(row.Get(columns.EndDate))) return "EndDate";
  if (type == Repetition::kDaily || type == Repetition::kListed) return "";
  if (type == Repetition::kByWeekday) {
    if (!AreNumbers(row.Text(columns.RepeatWeekday), 7)) return "RepeatWeekday";
    return FrequencyOf(row.Text(columns.RepeatFrequency)) ? "" : "RepeatFrequency";
  }
  if (type == Repetition::kMonthly && !AreNumbers(row.Text(columns.RepeatDay), 31)) return "RepeatDay";
  const std::string_view weekends = row.Text(columns.RepeatWeekends);
  return weekends.empty() || WeekendRuleOf(weekends) ? "" : "RepeatWeekends";
}

/// The suggestions among the events, and the events that they can refer to.
class Suggestions {
 public:
  /// Events come in the order of their numbers.
  void Add(std::int64_t event, std::string_view suggestion) {
    events_.push_back(event);
    if (!suggestion.empty()) copies_.emplace_back(event, suggestion);
  }

  void Check(Findings& findings) const {
    for (const auto& [copy, sender] : copies_) {
      const std::optional<int> number = WholeNumber(sender);
      if (number && std::binary_search(events_.begin(), events_.end(), std::int64_t{*number})) continue;
      findings.Add(kSuggestion, fmt::format("event {}: SuggID is \"{}\"", copy, sender));
    }
  }

 private:
  std::vector<std::int64_t> events_;
  std::vector<std::pair<std::int64_t, std::string>> copies_;
};

}  // namespace

void CheckEvents(DatabaseMaintenance& database, const dialect::Table& events, const CalendarNames& names,
                 Findings& findings) {
  Suggestions suggestions;
  TableScan row(database, events);
  const EventColumns columns(row);
  while (row.Next()) {
    suggestions.Add(row.Number(), row.Text(columns.SuggID));
    const auto place = [&row] { return fmt::format("event {}", row.Number()); };
    const std::string_view owner = row.Text(columns.Owner);
    if (!names.Contains(owner)) findings.Add(kOwner, fmt::format("{} of \"{}\"", place(), owner));
    if (!std::holds_alternative<Date>(row.Get(columns.BeginDate))) findings.Add(kBeginDate, place());
    const std::string_view part = UnreadableRulePart(row, columns);
    if (!part.empty()) findings.Add(kRule, fmt::format("{}: {}", place(), part));
  }
  suggestions.Check(findings);
}

}  // namespace orlune
