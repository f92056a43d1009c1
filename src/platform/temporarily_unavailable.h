#pragma once

#include <stdexcept>

namespace orlune {

/// The server is too busy for the request; another try a moment later may do. `what()` is for the log.
class TemporarilyUnavailable : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace orlune
