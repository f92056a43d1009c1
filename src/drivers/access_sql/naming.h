#pragma once

#include <string>

#include "drivers/access_sql/shape.h"
#include "platform/database.h"

namespace orlune::access_sql {

/// Runs `action` and adds the statement, without its values, to what it throws.
template <class Action>
auto Naming(const StatementText& statement, Action action) {
  try {
    return action();
  } catch (const DatabaseError& error) {
    throw DatabaseError(std::string(error.what()).append(" in: ").append(MaskedText(statement)));
  }
}

}  // namespace orlune::access_sql
