#pragma once

#include <filesystem>
#include <functional>

namespace orlune {

/// Creates a file with the base tables, which only its owner may read. It gets its name once `fill` has
/// written to it under the path that it is given; no connection may be left open then. Throws DatabaseError,
/// as when the file exists, and leaves no file behind.
void CreateBaseDatabase(const std::filesystem::path& file,
                        const std::function<void(const std::filesystem::path&)>& fill = {});

}  // namespace orlune
