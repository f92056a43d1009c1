#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/named_texts.h"

namespace orlune {

/// Decodes "%" and two hexadecimal digits as a byte; any other "%" is literal.
std::string DecodePercent(std::string_view text);
/// The inverse: letters, digits, "-", "_" and "." stay, every other byte is escaped.
std::string EncodePercent(std::string_view text);
/// Percent-decodes the path of a URL; nothing when an escape is malformed.
std::optional<std::string> DecodePath(std::string_view path);

/// The decoded names and values of a URL's query or an encoded form, repaired to valid UTF-8.
NamedTexts DecodeQuery(std::string_view query);
/// The inverse of `DecodeQuery`.
std::string EncodeQuery(const NamedTexts& texts);

/// `url` for a header: characters that a URL must not contain, such as line ends, are percent-encoded;
/// existing escapes are kept.
std::string EncodeUrl(std::string_view url);

}  // namespace orlune
