#pragma once

#include <string>
#include <string_view>

namespace orlune {

/// `text` as a reply quotes it, for a text area: every line begins with "&gt; " and holds at most 35
/// characters with that mark and its carriage return. Lines break at their last blank, and within a word that
/// alone is too long.
std::string QuoteForReply(std::string_view text);

}  // namespace orlune
