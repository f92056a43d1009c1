#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>

namespace orlune {

class Connection;

/// The names that senders are shown under; asks the database once for each sender.
class SenderNames {
 public:
  explicit SenderNames(Connection& database) : database_(database) {}

  /// Announces that the name will be asked.
  void Announce(std::string_view sender);
  /// The display name, or the login name of somebody whose account is gone. Throws DatabaseError.
  const std::string& DisplayName(std::string_view sender);

 private:
  Connection& database_;
  std::set<std::string, std::less<>> announced_;
  std::map<std::string, std::string, std::less<>> known_;
};

}  // namespace orlune
