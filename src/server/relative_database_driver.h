#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "platform/database.h"

namespace orlune {

/// Another driver, whose relative paths start at a folder. So a page can tell its visitors which database is
/// missing by the path that was configured, without the server's own folders.
class RelativeDatabaseDriver : public DatabaseDriver {
 public:
  /// `inner` outlives this driver and gets absolute paths.
  RelativeDatabaseDriver(DatabaseDriver& inner, std::filesystem::path folder);
  std::unique_ptr<Connection> Open(const std::string& path) override;

 private:
  DatabaseDriver& inner_;
  std::filesystem::path folder_;
};

}  // namespace orlune
