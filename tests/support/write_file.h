#pragma once

#include <filesystem>
#include <fstream>
#include <string_view>

namespace orlune::testing {

/// Writes a file, creating its folders, and returns its path.
inline std::filesystem::path WriteFile(const std::filesystem::path& file, std::string_view text) {
  std::filesystem::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << text;
  return file;
}

}  // namespace orlune::testing
