#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "drivers/access_sql/catalogue.h"

namespace orlune {

/// What the operator's commands ask of one database beyond the statements of the pages. Used by one thread.
/// Everything throws DatabaseError.
class DatabaseMaintenance {
 public:
  virtual ~DatabaseMaintenance() = default;

  /// All tables of the database as they are now, foreign ones included.
  virtual access_sql::Catalogue Tables() = 0;
  /// The indexes that the pages' queries want and that are missing, by name.
  virtual std::vector<std::string> MissingIndexes() = 0;
  /// What the engine itself finds wrong, each in one sentence; none when the database is sound.
  virtual std::vector<std::string> Damages() = 0;

  /// The highest number that the counter of `table` has given, also to rows that are gone; 0 when none.
  virtual std::int64_t LastCounter(const std::string& table) = 0;
  /// Makes the counter of `table` go on after `last`, unless it is further already.
  virtual void RaiseCounter(const std::string& table, std::int64_t last) = 0;
};

}  // namespace orlune
