#include "pages/calendar/hidden_hours.h"

#include "pages/calendar/day_layout.h"
#include "pages/calendar/view_content.h"
#include "request/visit.h"

namespace orlune {
namespace {

bool IsShown(const OL_Event& event, DisplayedHours hours) {
  for (int hour = hours.First; hour <= hours.Last; ++hour) {
    if (SpanInRow(event, hour, hours.First)) return true;
  }
  return false;
}

}  // namespace

void TellHiddenHours(Visit& visit) {
  const Visitor& visitor = visit.Context.Visitor;
  const DisplayedHours hours{visitor.DayBegin, visitor.DayEnd};
  const ViewContent content = LoadView(visit.Database, visit.Context, ViewMode::kDay);
  int earlier = 0;
  int later = 0;
  for (const Occurrence& occurrence : content.Events.GetEventsForDay(visitor.CurrentDate)) {
    const OL_Event& event = *occurrence.Event;
    if (!event.BeginTime || IsShown(event, hours)) continue;
    ++(*event.BeginTime < std::chrono::hours(hours.First) ? earlier : later);
  }
  visit.Response.SetContentType("application/json");
  visit.Response.Write("{\"earlier\":" + std::to_string(earlier) + ",\"later\":" + std::to_string(later) +
                       "}");
}

}  // namespace orlune
