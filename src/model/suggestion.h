#pragma once

#include <string>

namespace orlune {

/// What a recipient's answer to a suggestion is about.
struct SuggestedEvent {
  std::string EventName;
  std::string Owner;
};

/// What a recipient has answered to a suggestion.
struct SuggestionAnswer {
  std::string Recipient;  ///< display name
  std::string State;      ///< "undecided", "accepted" or "declined"
};

}  // namespace orlune
