#pragma once

#include <string>
#include <string_view>

namespace orlune {

/// A new identifier of a session: 128 random bits as 32 lower-case hexadecimal digits.
std::string NewSessionIdentifier();
/// Whether a text has the form of one.
bool IsSessionIdentifier(std::string_view text);

}  // namespace orlune
