#pragma once

#include <memory>
#include <string>
#include <vector>

#include "drivers/dialect/catalogue.h"
#include "drivers/postgresql/link.h"

namespace orlune::postgresql {

/// The schema that a connection works in.
struct Schema {
  dialect::Catalogue Tables;
  std::vector<std::string> Indexes;
  std::string Name;
  /// Equal for two connections exactly when they go to the same database of the same running server, as the
  /// same user, and know the same tables; null on a standby server.
  std::shared_ptr<const std::string> Source;
  bool CanCompareTexts = false;  ///< whether the case folding function exists
  bool IsWritable = false;       ///< false on a standby server
};

/// Reads it in one round trip. Throws DatabaseError.
Schema ReadSchema(Link& link);

}  // namespace orlune::postgresql
