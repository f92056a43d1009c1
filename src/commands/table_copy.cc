#include "commands/table_copy.h"

#include <vector>

#include "commands/row_digest.h"

namespace orlune {
namespace {

/// What one transaction writes.
constexpr std::size_t kBatch = 1000;

/// Calls `take` with the readable rows above the counter `after`, a batch at a time. Every table of ours
/// begins with its counter.
template <class Take>
void ForEachBatch(const dialect::Table& table, DatabaseMaintenance& database, std::int64_t after,
                  LostFields& lost, Take take) {
  for (;;) {
    std::vector<StoredRow> rows = database.Rows(table, after, kBatch);
    if (rows.empty()) return;
    for (StoredRow& row : rows) KeepReadable(table, row, lost);
    after = std::get<std::int64_t>(rows.back().front());
    take(rows);
  }
}

}  // namespace

void CopyTable(const dialect::Table& table, DatabaseMaintenance& source, DatabaseMaintenance& target,
               CopyProgress& progress) {
  LostFields toldLater;
  progress.Begin("copying " + table.Name, target.RowCount(table.Name), source.RowCount(table.Name));
  ForEachBatch(table, source, target.HighestNumber(table).value_or(kBeforeFirstRow), toldLater,
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
  progress.Begin("reading the " + std::string(whose) + "'s " + table.Name, 0, database.RowCount(table.Name));
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
