#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "base/civil_time.h"
#include "drivers/dialect/catalogue.h"

namespace orlune {

/// A field that does not fit its column's type, such as an invalid date.
struct Unreadable {
  std::string Stored;

  friend bool operator==(const Unreadable&, const Unreadable&) = default;
};

/// One field of a row that was read or is to be written: Null, or what the column's type holds. A text may be
/// anything that the database let in, valid UTF-8 or not.
using StoredField =
    std::variant<std::monostate, bool, std::int64_t, std::string, Date, TimeOfDay, DateTime, Unreadable>;
/// The fields in the order of the columns that were asked for.
using StoredRow = std::vector<StoredField>;

/// Below every counter.
inline constexpr std::int64_t kBeforeFirstRow = std::numeric_limits<std::int64_t>::min();

/// What the operator's commands ask of one database beyond the statements of the pages. Used by one thread.
/// Everything throws DatabaseError.
class DatabaseMaintenance {
 public:
  virtual ~DatabaseMaintenance() = default;

  /// All tables of the database as they are now, foreign ones included.
  virtual dialect::Catalogue Tables() = 0;
  /// The missing indexes of the pages' queries, by name.
  virtual std::vector<std::string> MissingIndexes() = 0;
  /// The missing triggers that log the changes of shared calendars, by name.
  virtual std::vector<std::string> MissingTriggers() = 0;
  /// What the engine itself finds wrong, one sentence each.
  virtual std::vector<std::string> Damages() = 0;

  /// How many rows `table` has.
  virtual std::int64_t RowCount(const std::string& table) = 0;
  /// The highest counter among the rows of `table`, which has a counter; nothing without rows.
  virtual std::optional<std::int64_t> HighestNumber(const dialect::Table& table) = 0;
  /// Up to `most` rows whose counters are above `after`, in the counter's order. `table` has a counter; its
  /// columns say what is read, and as which types. A yes/no is never Null.
  virtual std::vector<StoredRow> Rows(const dialect::Table& table, std::int64_t after, std::size_t most) = 0;
  /// Adds the rows with the counters that they have, all or none; durable on return. None of their fields is
  /// Unreadable.
  virtual void Insert(const dialect::Table& table, std::span<const StoredRow> rows) = 0;

  /// The highest number that the counter of `table` has given, also to deleted rows; 0 when none.
  virtual std::int64_t LastCounter(const std::string& table) = 0;
  /// Raises the counter of `table` to `last`, unless it is higher.
  virtual void RaiseCounter(const std::string& table, std::int64_t last) = 0;

  /// What the database is a copy of, as long as the copy is not complete; nothing otherwise. It is kept in a
  /// table named `kUnfinishedCopy`, and a database that has it is not served.
  virtual std::optional<std::string> UnfinishedCopySource() = 0;
  /// An unfinished copy may lack indexes.
  virtual void MarkUnfinishedCopy(const std::string& source) = 0;
  virtual void MarkCopyComplete() = 0;
};

/// Its one column is `Source`.
inline constexpr const char* kUnfinishedCopy = "UnfinishedCopy";

}  // namespace orlune
