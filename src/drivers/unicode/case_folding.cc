#include "drivers/unicode/case_folding.h"

#include <algorithm>

#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include "base/ascii.h"
#include "base/utf8.h"

namespace orlune::unicode {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"  // in ICU's macros

/// Takes one code point off the front of `text`, which is not empty; below 0 when it is not UTF-8.
UChar32 TakeCodePoint(std::string_view& text) {
  int32_t position = 0;
  UChar32 codePoint = 0;
  const auto length = static_cast<int32_t>(std::min<std::size_t>(text.size(), U8_MAX_LENGTH));
  U8_NEXT(text.data(), position, length, codePoint);
  text.remove_prefix(static_cast<std::size_t>(position));
  return codePoint;
}

#pragma GCC diagnostic pop

}  // namespace

Folding TakeFolded(std::string_view& text) {
  if (IsAscii(text.front())) {
    const auto folded = static_cast<char32_t>(ToLowerAscii(text.front()));
    text.remove_prefix(1);
    return {{folded}, 1};
  }
  UChar32 codePoint = TakeCodePoint(text);
  if (codePoint < 0) return {{kReplacement}, 1};

  std::array<UChar, 2> source{};
  int32_t sourceLength = 0;
  U16_APPEND_UNSAFE(source.data(), sourceLength, codePoint);
  std::array<UChar, 8> target{};
  UErrorCode error = U_ZERO_ERROR;
  const int32_t targetLength = u_strFoldCase(target.data(), static_cast<int32_t>(target.size()),
                                             source.data(), sourceLength, U_FOLD_CASE_DEFAULT, &error);
  Folding folding;
  for (int32_t i = 0; i < targetLength;) {
    U16_NEXT(target.data(), i, targetLength, codePoint);
    folding.CodePoints[folding.Count++] = static_cast<char32_t>(codePoint);
  }
  return folding;
}

std::string FoldCase(std::string_view text) {
  std::string folded;
  folded.reserve(text.size());
  while (!text.empty()) {
    const Folding folding = TakeFolded(text);
    for (std::size_t i = 0; i < folding.Count; ++i) AppendUtf8(folded, folding.CodePoints[i]);
  }
  return folded;
}

}  // namespace orlune::unicode
