#pragma once

#include <cstddef>

namespace orlune {

/// Raises the limit of this process' file descriptors as far as it may be raised. How many they are then.
std::size_t RaiseFileLimit();

/// How many of the descriptors connections may take, so that files and databases have enough.
std::size_t DescriptorsForConnections(std::size_t descriptors);

}  // namespace orlune
