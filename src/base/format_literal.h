#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace orlune {

/// A string literal with `count` placeholders "{}" for the parts of a page or a statement, split there when
/// it is compiled; any other number of placeholders is a compile error.
template <std::size_t count>
class FormatLiteral {
 public:
  consteval FormatLiteral(const char* text) {  // NOLINT(google-explicit-constructor)
    std::string_view rest(text);
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t place = rest.find("{}");
      if (place == std::string_view::npos) throw "there are fewer {} than parts";
      pieces_[i] = rest.substr(0, place);
      rest.remove_prefix(place + 2);
    }
    if (rest.find("{}") != std::string_view::npos) throw "there are more {} than parts";
    pieces_[count] = rest;
  }
  /// The text before each placeholder, and that behind the last one.
  constexpr const std::array<std::string_view, count + 1>& Pieces() const { return pieces_; }

 private:
  std::array<std::string_view, count + 1> pieces_;
};

}  // namespace orlune
