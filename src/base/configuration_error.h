#pragma once

#include <stdexcept>

namespace orlune {

/// What was asked for on the command line or in the configuration cannot be done. `what()` is a sentence for
/// the person who configures the server.
class ConfigurationError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace orlune
