#include "commands/table_copy.h"

#include <vector>

#include <fmt/format.h>

#include "commands/row_digest.h"

namespace orlune {
namespace {

/// Rows of one transaction.
constexpr std::size_t kBatch = 1000;

/// Calls `handle` with the readable rows above the counter `after`, a batch at a time. The first column of
/// each of our tables is its counter.
template <class Handle>
void ForEachBatch(const dialect::Table& table, DatabaseMaintenance& database, std::int64_t after,
                  LostFields& lost, Handle handle) {
  for (;;) {
    std::vector<StoredRow> rows = database.Rows(table, after, kBatch);
    if (rows.empty()) return;
    for (StoredRow& row : rows) KeepReadable(table, row, lost);
    after = std::get<std::int64_t>(rows.back().front());
    handle(rows);
  }
}

}  // namespace

void CopyTable(const dialect::Table& table, DatabaseMaintenance& source, DatabaseMaintenance& target,
               CopyProgress& progress) {
  LostFields countedLater;
  progress.Begin(fmt::format("copying {}", table.Name), target.RowCount(table.Name),
                 source.RowCount(table.Name));
  ForEachBatch(table, source, target.HighestNumber(table).value_or(kBeforeFirstRow), countedLater,
               [&](const std::vector<StoredRow>& rows) {
                 target.Insert(table, rows);
                 progress.Advance(static_cast<std::int64_t>(rows.size()));
               });
  target.RaiseCounter(table.Name, source.LastCounter(table.Name));
  progress.End();
}

TableSummary Summarise(const dialect::Table& table, DatabaseMaintenance& database, std::string_view whose,
                       LostFields& lost, CopyProgress& progress) {
  TableSummary summary;
  RowDigest digest;
  progress.Begin(fmt::format("reading the {}'s {}", whose, table.Name), 0, database.RowCount(table.Name));
  ForEachBatch(table, database, kBeforeFirstRow, lost, [&](const std::vector<StoredRow>& rows) {
    for (const StoredRow& row : rows) digest.Add(row);
    summary.Rows += static_cast<std::int64_t>(rows.size());
    progress.Advance(static_cast<std::int64_t>(rows.size()));
  });
  progress.End();
  summary.Checksum = digest.Finish();
  return summary;
}

}  // namespace orlune
