#include "model/suggestion.h"

#include "base/enum_names.h"

namespace orlune {
namespace {

constexpr EnumNames<5> kStates{"", "-", "undecided", "accepted", "declined"};

}  // namespace

std::string_view StoredText(SuggestionState state) {
  return NameOf(kStates, state);
}

std::optional<SuggestionState> SuggestionStateOf(std::string_view text) {
  return ValueNamed<SuggestionState>(kStates, text);
}

}  // namespace orlune
