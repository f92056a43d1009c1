#pragma once

#include <string>

#include "drivers/access_sql/statement_cache.h"
#include "drivers/access_sql/translation.h"
#include "drivers/postgresql/link.h"

namespace orlune::postgresql {

/// A translated statement, and under which name it is prepared on the server.
struct CachedStatement {
  access_sql::Translation Translation;
  std::string Name;
  ReplyPtr Prepared;  ///< the reply to its preparation; null before
};
using StatementCache = access_sql::StatementCache<CachedStatement>;

}  // namespace orlune::postgresql
