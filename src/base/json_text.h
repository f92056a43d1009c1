#pragma once

#include <string>
#include <string_view>

namespace orlune {

/// `text` as a string of JSON, with its quotes (RFC 8259, section 7). Invalid bytes become U+FFFD.
std::string JsonText(std::string_view text);

}  // namespace orlune
