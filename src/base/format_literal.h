#pragma once

#include <cstddef>
#include <string_view>

namespace orlune {

/// A string literal with `count` placeholders "{}" for the parts of a page or a statement; any other number
/// of placeholders is a compile error.
template <std::size_t count>
class FormatLiteral {
 public:
  consteval FormatLiteral(const char* text) : text_(text) {  // NOLINT(google-explicit-constructor)
    std::size_t places = 0;
    for (std::size_t i = 0; i + 1 < text_.size(); ++i) places += text_[i] == '{' && text_[i + 1] == '}';
    if (places != count) throw "the number of {} differs from the number of parts";
  }
  std::string_view Text() const { return text_; }

 private:
  std::string_view text_;
};

}  // namespace orlune
