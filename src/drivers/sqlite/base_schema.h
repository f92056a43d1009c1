#pragma once

#include <filesystem>

namespace orlune {

/// Creates a database with the tables that every database starts with, without rows. Throws DatabaseError, as
/// when the file exists; no file is left behind then.
void CreateBaseDatabase(const std::filesystem::path& file);

}  // namespace orlune
