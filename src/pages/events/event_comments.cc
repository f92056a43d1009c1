#include "pages/events/event_comments.h"

#include "base/json_text.h"
#include "base/lists.h"
#include "base/text.h"
#include "request/visit.h"
#include "store/event_store.h"

namespace orlune {

void TellEventComments(Visit& visit) {
  const auto id = RowNumber(visit.Request.QueryParameter("id"));
  const auto event = id ? Ask(visit.Database, FindEvent(*id)) : std::nullopt;
  if (!event) return visit.Response.SetStatus(404);
  if (!visit.Context.Visitor.MayChangeEventsOf(event->Owner)) return visit.Response.SetStatus(403);
  const std::string comments = ReplaceAll(ReplaceAll(event->Comments, "&#39;", "'"), "&quot;", "\"");
  visit.Response.SetContentType("application/json");
  visit.Response.Write("{\"comments\":" + JsonText(comments) + "}");
}

}  // namespace orlune
