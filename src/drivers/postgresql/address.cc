#include "drivers/postgresql/address.h"

#include <algorithm>
#include <array>

namespace orlune {

namespace {

constexpr std::array<std::string_view, 2> kSchemes{"postgresql://", "postgres://"};

/// Parameters that may be shown; any other could be a password, or a part of one.
constexpr std::array<std::string_view, 12> kHarmless{
    "host",    "hostaddr", "port",    "dbname",   "user",        "application_name",
    "sslmode", "service",  "options", "passfile", "sslrootcert", "target_session_attrs"};

bool IsHarmless(std::string_view parameter) {
  return std::find(kHarmless.begin(), kHarmless.end(), parameter.substr(0, parameter.find('='))) !=
         kHarmless.end();
}

std::string WithoutSecrets(std::string_view parameters) {
  std::string kept;
  while (!parameters.empty()) {
    const std::string_view parameter = parameters.substr(0, parameters.find('&'));
    parameters.remove_prefix(std::min(parameters.size(), parameter.size() + 1));
    if (IsHarmless(parameter)) kept.append(kept.empty() ? "?" : "&").append(parameter);
  }
  return kept;
}

/// Where the user's name and password end; npos without them. A password that was not encoded may hold
/// anything, so that is the last "@" of all.
std::size_t EndOfUser(std::string_view address) {
  return address.rfind('@');
}

}  // namespace

bool IsPostgresqlAddress(std::string_view path) {
  return std::any_of(kSchemes.begin(), kSchemes.end(),
                     [path](std::string_view scheme) { return path.starts_with(scheme); });
}

bool HasUnreadableUser(std::string_view address) {
  const std::size_t authority = address.find("//") + 2;
  const std::size_t at = EndOfUser(address);
  if (at == std::string_view::npos || at < authority) return false;
  return address.substr(authority, at - authority).find_first_of("@/?#") != std::string_view::npos;
}

bool IsMalformedAddress(std::string_view path) {
  if (IsPostgresqlAddress(path)) return false;
  return path.find("://") != std::string_view::npos || path.starts_with("postgresql:") ||
         path.starts_with("postgres:") || path.find("password=") != std::string_view::npos;
}

std::string WithoutPassword(std::string_view path) {
  if (!IsPostgresqlAddress(path)) return std::string(path);
  const std::size_t authority = path.find("//") + 2;
  const std::size_t at = EndOfUser(path);
  const bool hasUser = at != std::string_view::npos && at >= authority;
  const std::size_t query = std::min(path.size(), path.find('?', hasUser ? at : authority));
  std::string shown(path.substr(0, authority));
  if (hasUser) shown += path.substr(authority, path.find_first_of(":@/?", authority) - authority);
  const std::size_t rest = hasUser ? at : authority;
  shown += path.substr(rest, query - rest);
  return shown + WithoutSecrets(path.substr(std::min(path.size(), query + 1)));
}

}  // namespace orlune
