#pragma once

#include <set>
#include <string>
#include <string_view>

namespace orlune {

/// The names in a text list, for fast lookups ignoring case. Empty items are not members.
class NameSet {
 public:
  explicit NameSet(std::string_view listText);

  bool Contains(std::string_view name) const;

 private:
  std::set<std::string, std::less<>> lowerNames_;
};

}  // namespace orlune
