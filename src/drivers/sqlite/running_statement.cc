#include "drivers/sqlite/running_statement.h"

#include <sqlite3.h>

namespace orlune::sqlite {

RunningStatement::~RunningStatement() {
  if (!handle_) return;
  sqlite3_reset(handle_.get());
  origin_->Idle.push_back(std::move(handle_));
}

}  // namespace orlune::sqlite
