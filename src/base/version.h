#pragma once

#include <string_view>

namespace orlune {

/// Major, minor and patch version.
inline constexpr std::string_view kVersion = "1.0.0";

inline constexpr std::string_view kProductHomeUrl = "https://orlune.example/";

}  // namespace orlune
