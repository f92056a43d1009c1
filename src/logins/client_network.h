#pragma once

#include <string>
#include <string_view>

namespace orlune {

/// What one visitor can be expected to have: an IPv4 address, or the /64 network of an IPv6 address, in which
/// a household or an attacker has as many addresses as they like. A text that is no address stays as it is.
std::string ClientNetwork(std::string_view address);

}  // namespace orlune
