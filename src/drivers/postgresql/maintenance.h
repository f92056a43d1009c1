#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "drivers/postgresql/link.h"
#include "drivers/schema/database_maintenance.h"

namespace orlune::postgresql {

/// The upkeep of one database on a server.
class Maintenance : public DatabaseMaintenance {
 public:
  /// Connects, without a limit to how long a statement takes. Throws DatabaseError.
  explicit Maintenance(const std::string& address);

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
  /// The first field of the first row, if it is not Null.
  std::optional<std::string> Ask(const std::string& query);
  std::vector<std::string> AskAll(const char* query);

  Link link_;
};

}  // namespace orlune::postgresql
