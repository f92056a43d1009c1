#include "http/css_text.h"

#include <algorithm>

namespace orlune {
namespace {

constexpr std::string_view kSeparators = "{};:,>";
constexpr std::string_view kNoBlankBefore = "{};,>";  // before ":" one means a descendant
constexpr std::string_view kBlanks = " \t\r\n\f";

bool IsIn(std::string_view characters, char c) {
  return characters.find(c) != std::string_view::npos;
}

bool IsBlank(char c) {
  return IsIn(kBlanks, c);
}

/// Where the text that is quoted by its first character ends.
std::size_t EndOfQuoted(std::string_view css) {
  for (std::size_t i = 1; i < css.size(); ++i) {
    if (css[i] == '\\') {
      ++i;
    } else if (css[i] == css[0] || css[i] == '\n') {
      return i + 1;
    }
  }
  return css.size();
}

std::size_t EndOfComment(std::string_view css) {
  const std::size_t end = css.find("*/", 2);
  return end == std::string_view::npos ? css.size() : end + 2;
}

/// How many characters at the beginning belong together: a comment, a quoted text, an address, an escape.
std::size_t SizeOfPiece(std::string_view css) {
  if (css.starts_with("/*")) return EndOfComment(css);
  if (css[0] == '"' || css[0] == '\'') return EndOfQuoted(css);
  if (css[0] == '\\') return 2;
  if (css.starts_with("url(")) return css.find_first_of("\"')", 4);
  return 1;
}

}  // namespace

std::string ShortenCss(std::string_view css) {
  std::string shortened;
  shortened.reserve(css.size());
  char previous = ';';  // the last piece when it is one character
  bool hasBlanks = false;
  while (!css.empty()) {
    const std::string_view piece = css.substr(0, std::min(SizeOfPiece(css), css.size()));
    css.remove_prefix(piece.size());
    const bool isComment = piece.starts_with("/*");
    if (IsBlank(piece[0]) || (isComment && IsIn(kSeparators, previous))) {
      hasBlanks = true;
      continue;
    }
    const char single = piece.size() == 1 ? piece[0] : '\0';
    if (hasBlanks && !IsIn(kSeparators, previous) && !IsIn(kNoBlankBefore, single)) shortened += ' ';
    if (single == '}' && previous == ';' && !shortened.empty()) shortened.pop_back();
    shortened.append(isComment ? "/**/" : piece);
    previous = single;
    hasBlanks = false;
  }
  return shortened;
}

}  // namespace orlune
