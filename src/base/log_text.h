#pragma once

#include <string>
#include <string_view>

namespace orlune {

/// `text` for one line of the log: control characters become blanks, and a long text is cut.
std::string OneLine(std::string_view text);

}  // namespace orlune
