#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orlune {

/// The state of a suggested event: `kSent` for the sender's copy, the later ones for recipients' copies.
enum class SuggestionState { kNotSuggested, kSent, kUndecided, kAccepted, kDeclined };

/// The text in the database and in forms.
std::string_view StoredText(SuggestionState state);
/// The inverse; nothing for an unknown text.
std::optional<SuggestionState> SuggestionStateOf(std::string_view text);

/// The event that a recipient's answer refers to.
struct SuggestedEvent {
  std::string EventName;
  std::string Owner;
};

/// A recipient's answer to a suggestion.
struct SuggestionAnswer {
  std::string Recipient;  ///< display name
  SuggestionState State;
};

}  // namespace orlune
