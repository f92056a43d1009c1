#include "commands/database_address.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace orlune {
namespace {

constexpr std::string_view kMask = "***";
constexpr std::string_view kSchemeEnd = "://";

void MaskUserInfo(std::string& address) {
  const std::size_t scheme = address.find(kSchemeEnd);
  if (scheme == std::string::npos) return;
  const std::size_t begin = scheme + kSchemeEnd.size();
  const std::size_t end = address.rfind('@');
  const std::size_t colon = address.find(':', begin);
  if (end == std::string::npos || colon > end) return;
  address.replace(colon + 1, end - colon - 1, kMask);
}

void MaskParameters(std::string& address) {
  constexpr std::string_view kParameter = "password=";
  for (std::size_t at = address.find(kParameter); at != std::string::npos;
       at = address.find(kParameter, at)) {
    at += kParameter.size();
    const std::size_t end = std::min(address.find_first_of("& ", at), address.size());
    address.replace(at, end - at, kMask);
  }
}

}  // namespace

bool IsPostgresqlUrl(std::string_view address) {
  return address.starts_with("postgresql://") || address.starts_with("postgres://");
}

std::string ShownAddress(std::string_view address) {
  std::string shown(address);
  MaskUserInfo(shown);
  MaskParameters(shown);
  return shown;
}

bool IsSameDatabase(const std::string& one, const std::string& other) {
  if (IsPostgresqlUrl(one) || IsPostgresqlUrl(other)) return ShownAddress(one) == ShownAddress(other);
  std::error_code missing;
  return std::filesystem::weakly_canonical(one) == std::filesystem::weakly_canonical(other) ||
         std::filesystem::equivalent(one, other, missing);
}

}  // namespace orlune
