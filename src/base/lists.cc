#include "base/lists.h"

#include "base/text.h"

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

bool IsNameInList(std::string_view listText, std::string_view name) {
  bool found = false;
  ForEachItem(listText, [&](std::string_view item) { found = found || EqualIgnoringCase(item, name); });
  return found;
}

std::string AppendToList(std::string_view listText, std::string_view item) {
  std::string list(listText);
  if (!list.empty()) list += ", ";
  return list.append(item);
}

std::string RemoveFromList(std::string_view listText, std::string_view name) {
  std::vector<std::string> items = SplitList(listText);
  std::erase_if(items, [&](const std::string& item) { return EqualIgnoringCase(item, name); });
  return JoinList(items);
}

std::string ReplaceInList(std::string_view listText, std::string_view name, std::string_view newName) {
  std::vector<std::string> items = SplitList(listText);
  for (std::string& item : items) {
    if (EqualIgnoringCase(item, name)) item = newName;
  }
  return JoinList(items);
}

std::optional<int> RowNumber(std::string_view text) {
  const auto number = WholeNumber(text);
  return number && *number > 0 ? number : std::nullopt;
}

std::optional<std::string> RowNumbers(std::string_view listText) {
  std::string numbers;
  bool isList = true;
  ForEachItem(listText, [&](std::string_view item) {
    const auto number = RowNumber(item);
    isList = isList && number;
    if (!numbers.empty()) numbers += ", ";
    numbers += std::to_string(number.value_or(0));
  });
  return isList ? std::optional(std::move(numbers)) : std::nullopt;
}

}  // namespace orlune
