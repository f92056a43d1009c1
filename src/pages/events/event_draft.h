#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/ol_event.h"

namespace orlune {

class Request;
struct PageContext;

/// An event as its form holds it. Dates and times are the texts that were typed, so that nothing of them is
/// lost before they are checked; those of `Event` do not count.
struct EventDraft {
  OL_Event Event;
  bool IsTyped = false;  ///< title and comments are as typed, not yet as they are stored
  std::string BeginDate;
  std::string EndDate;
  std::string BeginTime;  ///< "" or "- - - -" for none
  std::string EndTime;
};

/// The draft of a posted form. Its number and what the form does not carry are those of `stored`, if any.
EventDraft PostedDraft(const Request& request, const std::optional<OL_Event>& stored);
/// The draft that changes a stored event.
EventDraft StoredDraft(const PageContext& context, const OL_Event& stored);
/// Gives what is still empty the values of a new event: the date that the calendar shows, in the user's own
/// calendar.
void FillDefaults(const PageContext& context, EventDraft& draft);

}  // namespace orlune
