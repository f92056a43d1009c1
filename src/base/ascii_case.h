#pragma once

#include <string_view>

namespace orlune {

/// Whether two texts are the same but for the case of the letters A to Z, as names in HTTP are compared.
bool EqualsIgnoringCase(std::string_view a, std::string_view b);

}  // namespace orlune
