#pragma once

#include <string>
#include <string_view>

namespace orlune {

/// `text` quoted for a reply, for a text area: every line begins with "&gt; " and has at most 35 characters
/// including that mark and the carriage return. Lines are wrapped at the last space, or within a word that is
/// too long by itself.
std::string QuoteForReply(std::string_view text);

}  // namespace orlune
