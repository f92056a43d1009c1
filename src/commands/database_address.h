#pragma once

#include <string>
#include <string_view>

namespace orlune {

/// Whether an operator named a database by a postgresql:// URL and not by its file.
bool IsPostgresqlUrl(std::string_view address);

/// The address as it may be shown and kept: passwords in it are masked.
std::string ShownAddress(std::string_view address);

/// Whether two addresses name one database. Different spellings of a host are not recognised.
bool IsSameDatabase(const std::string& one, const std::string& other);

}  // namespace orlune
