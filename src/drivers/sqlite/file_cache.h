#pragma once

#include <cstddef>

#include "drivers/sqlite/file_history.h"
#include "drivers/sqlite/kept_results.h"

namespace orlune::sqlite {

/// What the databases of one file know in common. Shared by threads.
struct FileCache {
  /// Keeps results of up to `mostBytes`.
  explicit FileCache(std::size_t mostBytes) : Results(mostBytes) {}

  FileHistory History;
  KeptResults Results;
};

}  // namespace orlune::sqlite
