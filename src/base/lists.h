#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orlune {

/// The items of a text list, split at every ", "; an empty text gives one empty item.
std::vector<std::string> SplitList(std::string_view text);
/// Whether a text list contains `item`; case-sensitive.
bool IsInList(std::string_view listText, std::string_view item);
/// The items joined with ", ".
std::string JoinList(std::span<const std::string> items);

/// The same ignoring case, as names of calendars are compared.
bool IsNameInList(std::string_view listText, std::string_view name);
/// A text list with `item` appended; an empty text becomes that item.
std::string AppendToList(std::string_view listText, std::string_view item);
/// A text list without the items that equal `name`, ignoring case.
std::string RemoveFromList(std::string_view listText, std::string_view name);
/// A text list with each item that equals `name`, ignoring case, replaced by `newName`.
std::string ReplaceInList(std::string_view listText, std::string_view name, std::string_view newName);

/// The number of a row, 1 or more, that `text` is.
std::optional<int> RowNumber(std::string_view text);
/// A text list of such numbers in that very form; nothing when an item is none.
std::optional<std::string> RowNumbers(std::string_view listText);

/// Calls `visit` with each item of a text list in order, as a view into `listText`.
template <class Visit>
void ForEachItem(std::string_view listText, Visit visit) {
  for (;;) {
    const std::size_t end = listText.find(", ");
    visit(listText.substr(0, end));
    if (end == std::string_view::npos) return;
    listText.remove_prefix(end + 2);
  }
}

}  // namespace orlune
