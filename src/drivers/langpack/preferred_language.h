#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace orlune {

/// The index of the tag, such as "de" or "pt-BR", that a browser's header "Accept-Language" prefers; nothing
/// when it accepts none of them. A range also accepts the language without its region, or with another one
/// (RFC 4647, section 3.4), and Norwegian of any kind accepts "nb".
std::optional<std::size_t> PreferredLanguage(std::string_view acceptLanguage,
                                             std::span<const std::string> tags);

}  // namespace orlune
