#include "caldav/sync_token.h"

namespace orlune {

std::string SyncTokenUrl(std::string_view token) {
  return "data:," + std::string(token);
}

std::optional<std::string> ReadSyncTokenUrl(std::string_view url) {
  constexpr std::string_view kBegin = "data:,";
  if (!url.starts_with(kBegin)) return std::nullopt;
  return std::string(url.substr(kBegin.size()));
}

}  // namespace orlune
