#pragma once

#include <string>

namespace orlune {

/// 14 letters and digits (80 bits) without those that look alike. Throws std::runtime_error when there is no
/// source of randomness.
std::string MakeRandomPassword();

}  // namespace orlune
