#pragma once

#include <string>
#include <string_view>

namespace orlune {

/// `text` for one line of the log: control characters become spaces, and a long text is truncated.
std::string OneLine(std::string_view text);

}  // namespace orlune
