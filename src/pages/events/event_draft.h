#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/ol_event.h"

namespace orlune {

class Request;
struct PageContext;

/// An event as entered in its form. Dates and times are the entered texts, so that invalid ones can be shown
/// again; those of `Event` are unused.
struct EventDraft {
  OL_Event Event;
  bool IsTyped = false;        ///< title and comments are as entered, not escaped as they are stored
  bool HasListedDays = false;  ///< the stored event has; it may keep them, and then its dates
  std::string BeginDate;
  std::string EndDate;
  std::string BeginTime;  ///< "" or "- - - -" for none
  std::string EndTime;
};

/// The draft of a posted form. Its number and what the form does not carry are those of `stored`, if any, and
/// so are the dates of an event with listed days.
EventDraft PostedDraft(const PageContext& context, const Request& request,
                       const std::optional<OL_Event>& stored);
/// The draft that changes a stored event.
EventDraft StoredDraft(const PageContext& context, const OL_Event& stored);
/// Sets empty fields to the defaults of a new event: the current date, in the user's own calendar.
void FillDefaults(const PageContext& context, EventDraft& draft);

}  // namespace orlune
