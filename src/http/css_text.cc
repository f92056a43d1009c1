#include "http/css_text.h"

#include <algorithm>

namespace orlune {
namespace {

constexpr std::string_view kSeparators = "{};:,";
constexpr std::string_view kBlanks = " \t\r\n\f";

bool IsBlank(char c) {
  return kBlanks.find(c) != std::string_view::npos;
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
  bool isBetween = true;  // where neither blanks nor comments mean anything
  while (!css.empty()) {
    const std::string_view piece = css.substr(0, std::min(SizeOfPiece(css), css.size()));
    css.remove_prefix(piece.size());
    const bool isComment = piece.starts_with("/*");
    if (isBetween && (isComment || IsBlank(piece[0]))) continue;
    shortened.append(isComment ? "/**/" : piece);
    isBetween = piece.size() == 1 && kSeparators.find(piece[0]) != std::string_view::npos;
  }
  return shortened;
}

}  // namespace orlune
