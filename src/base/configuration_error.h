#pragma once

#include <stdexcept>

namespace orlune {

/// The command line or the configuration is invalid, or cannot be carried out. `what()` is a sentence for the
/// operator.
class ConfigurationError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace orlune
