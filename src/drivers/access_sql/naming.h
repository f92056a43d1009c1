#pragma once

#include <string>

#include "drivers/access_sql/shape.h"
#include "platform/database.h"

namespace orlune::access_sql {

/// Runs `action` and adds the statement, without its values, to what it throws.
template <class Action>
auto Naming(const StatementText& statement, Action action) {
  const auto named = [&statement](const DatabaseError& error) {
    return std::string(error.what()).append(" in: ").append(MaskedText(statement));
  };
  try {
    return action();
  } catch (const DatabaseUnavailable& error) {
    throw DatabaseUnavailable(named(error));
  } catch (const DatabaseError& error) {
    throw DatabaseError(named(error));
  }
}

}  // namespace orlune::access_sql
