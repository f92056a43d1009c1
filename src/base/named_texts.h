#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace orlune {

/// Texts by their names, such as the parameters of a query or the fields of a form.
class NamedTexts {
 public:
  /// Values that are added under one name are joined with ", ".
  void Add(std::string_view name, std::string_view value);
  /// Replaces the value of the name.
  void Set(std::string_view name, std::string_view value);
  void Remove(std::string_view name);
  /// The value, or "". The view is valid until that value changes.
  std::string_view Find(std::string_view name) const;

  std::size_t size() const { return texts_.size(); }
  auto begin() const { return texts_.begin(); }
  auto end() const { return texts_.end(); }

 private:
  std::map<std::string, std::string, std::less<>> texts_;
};

}  // namespace orlune
