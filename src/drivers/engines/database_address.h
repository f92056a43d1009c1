#pragma once

#include <filesystem>
#include <string>

namespace orlune {

/// Where a database is: a file, or the URL of a PostgreSQL database, together with the form that people may
/// see.
class DatabaseAddress {
 public:
  /// Throws DatabaseError for a malformed URL, which it does not show: it may hold a password.
  static DatabaseAddress Parse(const std::string& text);
  /// The same for a file whose path may be relative to `folder`; the folder is not displayed.
  static DatabaseAddress Parse(const std::string& text, const std::filesystem::path& folder);

  bool IsFile() const { return isFile_; }
  /// What the engine opens: the path, or the URL with its password. Never to be shown.
  const std::string& Target() const { return target_; }
  /// The address without its password, for pages, messages and the log.
  const std::string& Displayed() const { return displayed_; }

 private:
  DatabaseAddress() = default;

  bool isFile_ = true;
  std::string target_;
  std::string displayed_;
};

}  // namespace orlune
