#pragma once

#include <optional>
#include <string>
#include <string_view>

struct sqlite3;

namespace orlune::sqlite {

/// Below, at or above 0 as `left` comes before, equals or comes after `right`, both UTF-8, when their cases
/// are folded by Unicode's rules.
int CompareIgnoringCase(std::string_view left, std::string_view right);

/// A pattern where "%" stands for any text and "_" for any one code point; everything else stands for itself,
/// whatever its case. A pattern of more than 1,000 code points matches nothing, since matching takes as long
/// as pattern times text. One object serves one thread.
class LikePattern {
 public:
  explicit LikePattern(std::string_view pattern);
  bool Matches(std::string_view text);

 private:
  bool ContainsSought(std::string_view asciiText);
  bool MatchesFolded(std::string_view text);

  std::optional<std::string> sought_;  ///< set when the pattern is an ASCII text between two "%"
  std::string lowered_;
  std::u32string pattern_;
  std::u32string folded_;
};

/// Makes the collation NOCASE and the operator LIKE of a database compare so. Files keep the built-in
/// collation's name: other SQLite programs can read them, but must not write texts beyond ASCII to them,
/// since their NOCASE orders the indexes differently.
void CompareTextsAsUnicode(sqlite3* database);

}  // namespace orlune::sqlite
