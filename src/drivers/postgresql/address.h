#pragma once

#include <string>
#include <string_view>

namespace orlune {

/// Whether `path` is the address of a PostgreSQL database, such as "postgresql://orlune@db.example/calendar",
/// rather than a file's.
bool IsPostgresqlAddress(std::string_view path);

/// Whether `path` is neither such an address nor likely to be a file's: a misspelt address, which may hold a
/// password and must not be shown.
bool IsMalformedAddress(std::string_view path);
/// Whether characters that have to be encoded stand in the name or password of an address's user.
bool HasUnreadableUser(std::string_view address);
constexpr std::string_view kAddressSyntax =
    "malformed address: expected a file, postgresql:// or postgres://; in a password write the characters "
    "@ / ? # : as %40 %2F %3F %23 %3A";

/// The address without its password, whatever form that has. Any other text comes back unchanged.
std::string WithoutPassword(std::string_view path);

}  // namespace orlune
