#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orlune {

/// A name and a password as programs send them with each request.
struct BasicCredentials {
  std::string Name;
  std::string Password;
};

/// Reads a header "Authorization" (RFC 7617, in UTF-8). Nothing for another scheme, an empty name, control
/// characters, and what is malformed or longer than any password is.
std::optional<BasicCredentials> ReadBasicCredentials(std::string_view header);

}  // namespace orlune
