#include "drivers/sqlite/unicode_text.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include <sqlite3.h>

#include "base/ascii.h"
#include "drivers/sqlite/handles.h"
#include "drivers/unicode/case_folding.h"

namespace orlune::sqlite {

using unicode::Folding;
using unicode::TakeFolded;

namespace {

constexpr char32_t kAnyText = 0x110000;
constexpr char32_t kAnyCodePoint = 0x110001;
/// Marks where a code point of the original text begins among its folded ones.
constexpr char32_t kBegins = 0x80000000;

constexpr std::size_t kLongestPattern = 1000;

/// Gives the folded code points of a text one by one.
class FoldedReader {
 public:
  explicit FoldedReader(std::string_view text) : text_(text) {}

  /// The next one, or -1 at the end.
  std::int64_t Next() {
    if (index_ == folding_.Count) {
      if (text_.empty()) return -1;
      folding_ = TakeFolded(text_);
      index_ = 0;
    }
    return folding_.CodePoints[index_++];
  }

 private:
  std::string_view text_;
  Folding folding_;
  std::size_t index_ = 0;
};

int CompareFolded(std::string_view left, std::string_view right) {
  FoldedReader leftReader(left);
  FoldedReader rightReader(right);
  while (true) {
    const std::int64_t leftNext = leftReader.Next();
    const std::int64_t rightNext = rightReader.Next();
    if (leftNext != rightNext) return leftNext < rightNext ? -1 : 1;
    if (leftNext < 0) return 0;
  }
}

int Collate(void*, int leftLength, const void* left, int rightLength, const void* right) {
  return CompareIgnoringCase({static_cast<const char*>(left), static_cast<std::size_t>(leftLength)},
                             {static_cast<const char*>(right), static_cast<std::size_t>(rightLength)});
}

std::string_view TextOf(sqlite3_value* value) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
  return {text, static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

void Like(sqlite3_context* context, int, sqlite3_value** arguments) {
  if (sqlite3_value_type(arguments[0]) == SQLITE_NULL || sqlite3_value_type(arguments[1]) == SQLITE_NULL)
    return;
  auto* known = static_cast<LikePattern*>(sqlite3_get_auxdata(context, 0));
  std::unique_ptr<LikePattern> compiled;
  if (known == nullptr) compiled = std::make_unique<LikePattern>(TextOf(arguments[0]));
  LikePattern& pattern = known == nullptr ? *compiled : *known;
  sqlite3_result_int(context, pattern.Matches(TextOf(arguments[1])) ? 1 : 0);
  if (!compiled) return;
  sqlite3_set_auxdata(context, 0, compiled.release(), [](void* pointer) {
    const std::unique_ptr<LikePattern> freed(static_cast<LikePattern*>(pointer));
  });
}

}  // namespace

int CompareIgnoringCase(std::string_view left, std::string_view right) {
  const std::size_t shorter = std::min(left.size(), right.size());
  for (std::size_t i = 0; i < shorter; ++i) {
    if (!IsAscii(left[i]) || !IsAscii(right[i])) return CompareFolded(left.substr(i), right.substr(i));
    const char leftFolded = ToLowerAscii(left[i]);
    const char rightFolded = ToLowerAscii(right[i]);
    if (leftFolded != rightFolded) return leftFolded < rightFolded ? -1 : 1;
  }
  if (left.size() == right.size()) return 0;
  return left.size() < right.size() ? -1 : 1;
}

LikePattern::LikePattern(std::string_view pattern) {
  if (pattern.size() >= 2 && pattern.front() == '%' && pattern.back() == '%') {
    const std::string_view inner = pattern.substr(1, pattern.size() - 2);
    if (IsAscii(inner) && inner.find_first_of("%_") == std::string_view::npos) {
      sought_.emplace(inner);
      std::transform(inner.begin(), inner.end(), sought_->begin(), ToLowerAscii);
    }
  }
  while (!pattern.empty()) {
    if (pattern.front() == '%' || pattern.front() == '_') {
      pattern_ += pattern.front() == '%' ? kAnyText : kAnyCodePoint;
      pattern.remove_prefix(1);
      continue;
    }
    const Folding folding = TakeFolded(pattern);
    pattern_.append(folding.CodePoints.data(), folding.Count);
  }
}

bool LikePattern::Matches(std::string_view text) {
  if (pattern_.size() > kLongestPattern) return false;
  return sought_ && IsAscii(text) ? ContainsSought(text) : MatchesFolded(text);
}

bool LikePattern::ContainsSought(std::string_view asciiText) {
  lowered_.resize(asciiText.size());
  std::transform(asciiText.begin(), asciiText.end(), lowered_.begin(), ToLowerAscii);
  return memmem(lowered_.data(), lowered_.size(), sought_->data(), sought_->size()) != nullptr;
}

bool LikePattern::MatchesFolded(std::string_view text) {
  folded_.clear();
  while (!text.empty()) {
    const std::size_t begin = folded_.size();
    const Folding folding = TakeFolded(text);
    folded_.append(folding.CodePoints.data(), folding.Count);
    folded_[begin] |= kBegins;
  }

  std::size_t at = 0;
  std::size_t patternAt = 0;
  std::size_t retryAt = 0;
  std::size_t retryPatternAt = 0;  // just past the last "%" met, 0 for none
  while (at < folded_.size()) {
    const char32_t wanted = patternAt < pattern_.size() ? pattern_[patternAt] : 0;
    if (wanted == kAnyText) {
      retryPatternAt = ++patternAt;
      retryAt = at;
    } else if (wanted == kAnyCodePoint && (folded_[at] & kBegins) != 0) {
      ++patternAt;
      do {
        ++at;
      } while (at < folded_.size() && (folded_[at] & kBegins) == 0);
    } else if (patternAt < pattern_.size() && wanted == (folded_[at] & ~kBegins)) {
      ++patternAt;
      ++at;
    } else if (retryPatternAt > 0) {
      patternAt = retryPatternAt;
      at = ++retryAt;
    } else {
      return false;
    }
  }
  return pattern_.find_first_not_of(kAnyText, patternAt) == std::u32string::npos;
}

void CompareTextsAsUnicode(sqlite3* database) {
  Check(database, sqlite3_create_collation_v2(database, "NOCASE", SQLITE_UTF8, nullptr, Collate, nullptr));
  Check(database, sqlite3_create_function_v2(database, "like", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                                             Like, nullptr, nullptr, nullptr));
}

}  // namespace orlune::sqlite
