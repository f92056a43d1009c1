#include "frame/lists.h"

namespace orlune {

std::vector<std::string> SplitList(std::string_view text) {
  std::vector<std::string> items;
  ForEachItem(text, [&](std::string_view item) { items.emplace_back(item); });
  return items;
}

bool IsInList(std::string_view listText, std::string_view item) {
  bool found = false;
  ForEachItem(listText, [&](std::string_view candidate) { found = found || candidate == item; });
  return found;
}

std::string JoinList(std::span<const std::string> items) {
  std::string joined;
  for (const std::string& item : items) {
    if (&item != items.data()) joined += ", ";
    joined += item;
  }
  return joined;
}

}  // namespace orlune
