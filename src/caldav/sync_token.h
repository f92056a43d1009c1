#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orlune {

/// What "sync-token" says, and back; nothing for a text that no server of ours wrote.
std::string SyncTokenUrl(std::string_view token);
std::optional<std::string> ReadSyncTokenUrl(std::string_view url);

}  // namespace orlune
