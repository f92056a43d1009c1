#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orlune {

/// Where an event stands that was suggested: `kSent` is the sender's copy, the later ones are recipients'.
enum class SuggestionState { kNotSuggested, kSent, kUndecided, kAccepted, kDeclined };

/// The text that the database and the forms hold.
std::string_view StoredText(SuggestionState state);
/// What such a text stands for; nothing for any other text.
std::optional<SuggestionState> SuggestionStateOf(std::string_view text);

/// What a recipient's answer to a suggestion is about.
struct SuggestedEvent {
  std::string EventName;
  std::string Owner;
};

/// What a recipient has answered to a suggestion.
struct SuggestionAnswer {
  std::string Recipient;  ///< display name
  SuggestionState State;
};

}  // namespace orlune
