#pragma once

#include <string>
#include <string_view>

namespace orlune {

/// A style sheet that means the same without comments and blanks after separators.
std::string ShortenCss(std::string_view css);

}  // namespace orlune
