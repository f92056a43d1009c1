#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "pages/events/event_draft.h"

namespace orlune {

struct Visit;

/// Stores the event as a suggestion by the user, with a copy for each of `recipients` (groups are replaced by
/// their members), and sends them a message, in one transaction. Returns false and appends alerts when the
/// event is invalid or there are no recipients. Throws DatabaseError.
bool SendSuggestion(Visit& visit, const EventDraft& draft, const std::vector<std::string>& recipients);

/// Stores the user's answer, accepted or declined, to the suggestion whose sender's copy is `eventId`, and
/// shows the form for a note to the sender. Requires a login. Throws DatabaseError.
void AnswerSuggestion(Visit& visit, int eventId, SuggestionState answer);

/// Sends that note. Reads the query parameter "id" and the form fields "suggstate" and "addinfo". Requires a
/// user who received the suggestion or may change the event. Throws DatabaseError.
void NotifySender(Visit& visit);

}  // namespace orlune
