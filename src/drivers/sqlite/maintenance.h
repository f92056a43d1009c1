#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "drivers/schema/database_maintenance.h"
#include "drivers/sqlite/handles.h"

namespace orlune::sqlite {

/// The upkeep of one SQLite file.
class Maintenance : public DatabaseMaintenance {
 public:
  explicit Maintenance(DatabaseHandle database) : database_(std::move(database)) {}

  dialect::Catalogue Tables() override;
  std::vector<std::string> MissingIndexes() override;
  std::vector<std::string> MissingTriggers() override;
  std::vector<std::string> Damages() override;

  std::int64_t RowCount(const std::string& table) override;
  std::optional<std::int64_t> HighestNumber(const dialect::Table& table) override;
  std::vector<StoredRow> Rows(const dialect::Table& table, std::int64_t after, std::size_t most) override;
  void Insert(const dialect::Table& table, std::span<const StoredRow> rows) override;

  std::int64_t LastCounter(const std::string& table) override;
  void RaiseCounter(const std::string& table, std::int64_t last) override;

  std::optional<std::string> UnfinishedCopySource() override;
  void MarkUnfinishedCopy(const std::string& source) override;
  void MarkCopyComplete() override;

 private:
  bool HasTable(std::string_view name);
  /// Runs one statement with values for its "?".
  void Run(std::string_view sql, std::span<const StoredField> values);

  DatabaseHandle database_;
};

}  // namespace orlune::sqlite
