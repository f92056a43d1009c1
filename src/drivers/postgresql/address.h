#pragma once

#include <string>
#include <string_view>

namespace orlune {

/// Whether `path` is the address of a PostgreSQL database, such as "postgresql://orlune@db.example/calendar",
/// rather than a file's.
bool IsPostgresqlAddress(std::string_view path);

/// The address without what people must not see: its password, in whichever form it stands there. Any other
/// text comes back unchanged.
std::string WithoutPassword(std::string_view path);

}  // namespace orlune
