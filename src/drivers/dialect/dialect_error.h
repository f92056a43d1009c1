#pragma once

#include <cstddef>
#include <string>

#include "platform/database.h"

namespace orlune::dialect {

/// A statement is not in the dialect, or one of its values cannot stand where it was spliced in.
class DialectError : public DatabaseError {
 public:
  DialectError(std::size_t position, const std::string& cause)
      : DatabaseError(cause + " at position " + std::to_string(position)), Position(position) {}

  std::size_t Position;  ///< in bytes from the start of the statement's text
};

}  // namespace orlune::dialect
