#include "base/name_set.h"

#include "base/lists.h"
#include "base/text.h"

namespace orlune {

NameSet::NameSet(std::string_view listText) {
  ForEachItem(listText, [&](std::string_view name) {
    if (!name.empty()) lowerNames_.insert(ToLower(name));
  });
}

bool NameSet::Contains(std::string_view name) const {
  return lowerNames_.contains(ToLower(name));
}

}  // namespace orlune
