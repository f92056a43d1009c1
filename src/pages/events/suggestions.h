#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "pages/events/event_draft.h"

namespace orlune {

struct Visit;

/// Stores the event as suggested by the user, with a copy for each of `recipients`, groups replaced by their
/// members, and sends them a message; all of it or nothing. Returns false, with errors in the request, when
/// the event is not right or there is nobody to send it to. Throws DatabaseError.
bool SendSuggestion(Visit& visit, const EventDraft& draft, const std::vector<std::string>& recipients);

/// Records the user's answer, accepted or declined, to the suggestion whose sender's copy is `eventId`,
/// and shows the form for a note to the sender. Asks for somebody who is logged in. Throws DatabaseError.
void AnswerSuggestion(Visit& visit, int eventId, SuggestionState answer);

/// Sends that note. Reads the query parameter "id" and the form fields "suggstate" and "addinfo". Asks for
/// somebody whom the event was suggested to. Throws DatabaseError.
void NotifySender(Visit& visit);

}  // namespace orlune
