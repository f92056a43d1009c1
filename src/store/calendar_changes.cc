#include "store/calendar_changes.h"

#include "store/database_access.h"
#include "store/rows.h"
#include "store/transaction.h"

namespace orlune {
namespace {

/// Moments may be larger than an `int`.
std::int64_t MomentIn(const ResultSet& row, std::string_view column) {
  const Value value = row.Get(row.Column(column));
  const auto* moment = std::get_if<std::int64_t>(&value);
  return moment == nullptr ? 0 : *moment;
}

Query<std::int64_t> FirstMoment(Statement statement, std::string_view column) {
  return {std::move(statement),
          [column](ResultSet& rows) { return rows.Next() ? MomentIn(rows, column) : std::int64_t{0}; }};
}

Query<int> HighestChangeId() {
  return {Statement("SELECT TOP 1 ChangeID FROM CalendarChanges ORDER BY ChangeID DESC"),
          [](ResultSet& rows) {
            return rows.Next() ? NumberOf(rows.Get(rows.Column("ChangeID"))).value_or(0) : 0;
          }};
}

/// The moment of the last change that is to go: one before that of the first that has to stay, since changes
/// of one moment belong together.
Query<std::int64_t> MomentOfChange(int id) {
  return FirstMoment(
      Statement("SELECT TOP 1 Moment FROM CalendarChanges WHERE (ChangeID >= {}) ORDER BY ChangeID", id),
      "Moment");
}

}  // namespace

Query<std::int64_t> LastMomentIn(std::span<const std::string> calendars) {
  if (calendars.empty()) return {};
  return FirstMoment(Statement("SELECT TOP 1 Moment FROM CalendarChanges WHERE (Calendar IN ({})) "
                               "ORDER BY Moment DESC",
                               QuotedList(calendars)),
                     "Moment");
}

Query<std::vector<std::string>> NamesChangedSince(std::span<const std::string> calendars,
                                                  std::int64_t moment) {
  if (calendars.empty()) return {};
  return {Statement(
              "SELECT DISTINCT ResourceName FROM CalendarChanges WHERE (Calendar IN ({})) AND (Moment >= {})",
              QuotedList(calendars), moment),
          [](ResultSet& rows) { return TextsIn(rows, "ResourceName"); }};
}

Query<std::int64_t> TrimmedTo() {
  return FirstMoment(Statement("SELECT TOP 1 TrimmedTo FROM CalendarLogs ORDER BY LogID"), "TrimmedTo");
}

void TrimChanges(Connection& database, std::size_t most) {
  Transaction transaction(database);
  const std::int64_t excess = Ask(database, HighestChangeId()) - static_cast<std::int64_t>(most);
  if (excess <= 0) return;
  const std::int64_t last = Ask(database, MomentOfChange(static_cast<int>(excess))) - 1;
  const std::int64_t before = Ask(database, TrimmedTo());
  if (last <= before) return;
  database.Execute(Statement("DELETE FROM CalendarChanges WHERE (Moment <= {})", last));
  database.Execute(Statement("UPDATE CalendarLogs SET TrimmedTo = {}", last));
  transaction.Commit();
}

}  // namespace orlune
