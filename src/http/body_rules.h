#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

namespace orlune {

/// What the body of a request may be at its address: by default a form without files.
struct BodyRules {
  std::size_t MostFileBytes = 0;  ///< of a file in a form; 0: files are left out
  std::size_t MostRawBytes = 0;   ///< of a body that is kept as it was sent, whatever the method; 0: none is
};

using BodyRulesAt = std::function<BodyRules(std::string_view path)>;

}  // namespace orlune
