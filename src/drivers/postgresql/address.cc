#include "drivers/postgresql/address.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace orlune {

namespace {

constexpr std::array<std::string_view, 2> kSchemes{"postgresql://", "postgres://"};

/// Whether a parameter such as "password=x" gives a secret, its name percent-encoded or not.
bool IsSecret(std::string_view parameter) {
  std::string name(parameter.substr(0, parameter.find('=')));
  if (name.find('%') != std::string::npos) return true;
  std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::tolower(c); });
  return name.find("password") != std::string::npos;
}

std::string WithoutSecrets(std::string_view parameters) {
  std::string kept;
  while (!parameters.empty()) {
    const std::string_view parameter = parameters.substr(0, parameters.find('&'));
    parameters.remove_prefix(std::min(parameters.size(), parameter.size() + 1));
    if (!IsSecret(parameter)) kept.append(kept.empty() ? "?" : "&").append(parameter);
  }
  return kept;
}

}  // namespace

bool IsPostgresqlAddress(std::string_view path) {
  return std::any_of(kSchemes.begin(), kSchemes.end(),
                     [path](std::string_view scheme) { return path.starts_with(scheme); });
}

std::string WithoutPassword(std::string_view path) {
  if (!IsPostgresqlAddress(path)) return std::string(path);
  const std::size_t authority = path.find("//") + 2;
  const std::size_t query = std::min(path.size(), path.find('?', authority));
  // A password that was not encoded may hold "/" and "@": everything up to the last "@" goes.
  const std::size_t at = path.substr(0, query).rfind('@');
  std::string shown(path.substr(0, authority));
  if (at != std::string_view::npos && at >= authority) {
    const std::string_view user = path.substr(authority, at - authority);
    shown.append(user.substr(0, user.find(':'))).append(path.substr(at, query - at));
  } else {
    shown.append(path.substr(authority, query - authority));
  }
  return shown + WithoutSecrets(path.substr(std::min(path.size(), query + 1)));
}

}  // namespace orlune
