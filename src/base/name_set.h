#pragma once

#include <set>
#include <string>
#include <string_view>

namespace orlune {

/// The calendars that a text list names, found quickly and ignoring case. Empty items name nothing.
class NameSet {
 public:
  explicit NameSet(std::string_view listText);

  bool Contains(std::string_view name) const;

 private:
  std::set<std::string, std::less<>> lowerNames_;
};

}  // namespace orlune
