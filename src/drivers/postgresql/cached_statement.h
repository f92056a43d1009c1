#pragma once

#include <string>

#include "drivers/dialect/statement_cache.h"
#include "drivers/dialect/translation.h"
#include "drivers/postgresql/link.h"

namespace orlune::postgresql {

/// A translated statement, and under which name it is prepared on the server.
struct CachedStatement {
  dialect::Translation Translation;
  std::string Name;
  ReplyPtr Prepared;  ///< the reply to its preparation; null before
};
using StatementCache = dialect::StatementCache<CachedStatement>;

}  // namespace orlune::postgresql
