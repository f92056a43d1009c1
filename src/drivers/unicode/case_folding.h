#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace orlune::unicode {

/// The code points that one code point folds to.
struct Folding {
  std::array<char32_t, 8> CodePoints;
  std::size_t Count = 0;
};

/// Takes one code point of UTF-8 off the front of `text`, which is not empty, and folds its case by Unicode's
/// full case folding. Invalid UTF-8 becomes U+FFFD.
Folding TakeFolded(std::string_view& text);

/// The whole text, UTF-8, with its case folded.
std::string FoldCase(std::string_view text);

}  // namespace orlune::unicode
