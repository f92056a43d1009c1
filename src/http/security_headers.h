#pragma once

#include <string_view>
#include <vector>

#include "http/http_message.h"

namespace orlune {

/// What the pages need, and nothing foreign: their handlers and links are inline scripts, they are in no
/// frame, and their forms go to this server only.
inline constexpr std::string_view kContentSecurityPolicy =
    "default-src 'self'; script-src 'self' 'unsafe-inline'; style-src 'self' 'unsafe-inline'; "
    "img-src 'self' data:; object-src 'none'; base-uri 'none'; form-action 'self'; frame-ancestors 'none'";

/// Those of `headers` that mean something for style sheets, scripts and images.
std::vector<Header> HeadersOfParts(const std::vector<Header>& headers);

/// The headers of every answer that tell a browser what not to do with it; without a policy for "".
std::vector<Header> SecurityHeaders(std::string_view contentSecurityPolicy = kContentSecurityPolicy);

}  // namespace orlune
