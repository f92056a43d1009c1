#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/named_texts.h"

namespace orlune {

/// Reads "%" and two hexadecimal digits as a byte; any other "%" stands for itself.
std::string DecodePercent(std::string_view text);
/// The path of an address with its escapes read; nothing when one is malformed.
std::optional<std::string> DecodePath(std::string_view path);

/// The names and values of a query, or of a text that `EncodeQuery` made. Valid UTF-8.
NamedTexts DecodeQuery(std::string_view query);
std::string EncodeQuery(const NamedTexts& texts);

/// `url` for a header: what may not stand in an address, line ends above all, is escaped; escapes stay.
std::string EncodeUrl(std::string_view url);

}  // namespace orlune
