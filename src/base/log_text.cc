#include "base/log_text.h"

#include <algorithm>

namespace orlune {

std::string OneLine(std::string_view text) {
  constexpr std::size_t kLongest = 2000;
  std::string line(text.substr(0, kLongest));
  std::replace_if(
      line.begin(), line.end(), [](unsigned char c) { return c < ' ' || c == 0x7F; }, ' ');
  return line;
}

}  // namespace orlune
