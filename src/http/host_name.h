#pragma once

#include <span>
#include <string>
#include <string_view>

namespace orlune {

/// A Host header without its port: "example.org" of "example.org:80", "[::1]" of "[::1]:80".
std::string_view HostName(std::string_view host);

/// Whether a server that answers under `allowed` names answers a request with this Host header; under any
/// when there are none (DNS rebinding: a stranger's name that leads to this server is not one of them).
bool IsAllowedHost(std::string_view host, std::span<const std::string> allowed);

}  // namespace orlune
