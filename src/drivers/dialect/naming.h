#pragma once

#include <string>

#include "drivers/dialect/shape.h"
#include "platform/database.h"

namespace orlune::dialect {

/// Runs `action` and adds a statement to what it throws; `masked` gives its text without its values, "" for
/// one that is not to be named.
template <class Masked, class Action>
auto NamingMasked(Masked masked, Action action) {
  const auto named = [&masked](const DatabaseError& error) {
    const std::string statement = masked();
    return statement.empty() ? std::string(error.what()) : std::string(error.what()) + " in: " + statement;
  };
  try {
    return action();
  } catch (const DatabaseUnavailable& error) {
    throw DatabaseUnavailable(named(error));
  } catch (const DatabaseError& error) {
    throw DatabaseError(named(error));
  }
}

/// Runs `action` and adds the statement, without its values, to what it throws.
template <class Action>
auto Naming(const StatementText& statement, Action action) {
  return NamingMasked([&statement] { return MaskedText(statement); }, action);
}

}  // namespace orlune::dialect
