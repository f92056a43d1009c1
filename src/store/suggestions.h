#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/regional_settings.h"
#include "model/message.h"
#include "model/ol_event.h"
#include "model/suggestion.h"
#include "store/query.h"

namespace orlune {

// Suggestions: a sender's copy and recipients' copies in Events, and the messages about them. Functions that
// write throw DatabaseError and must be called within a transaction.

/// Stores `event` as its sender's copy, one copy for each recipient of `message`, who has still to answer,
/// and sends the message. Groups stand for their members; the sender of the message receives nothing.
/// `changeable` is as for `SaveEvent`.
void StoreSuggestion(Connection& database, const RegionalSettings& regional, OL_Event event,
                     OutgoingMessage message, std::span<const std::string> changeable);

/// Stores the answer in the copy of `recipient`. `suggId` is the `EventID` of the sender's copy.
void StoreAnswer(Connection& database, int suggId, std::string_view recipient, SuggestionState answer);

/// The `EventID` of the sender's copy of the newest suggestion; nothing when there is none.
std::optional<int> FindNewestSenderCopy(Connection& database);

Query<std::optional<SuggestedEvent>> FindSuggestedEvent(int id);
/// Whether the calendar `owner` has a recipient's copy of the suggestion `suggId`.
Query<bool> HasReceivedCopy(int suggId, std::string_view owner);
/// The recipients of the suggestion `suggId` with their answers.
Query<std::vector<SuggestionAnswer>> AnswersTo(int suggId);

}  // namespace orlune
