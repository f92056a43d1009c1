#include "pages/calendar/event_entry.h"

#include "base/text.h"
#include "html/form_parts.h"
#include "html/links.h"
#include "pages/calendar/view_parts.h"
#include "request/component_state.h"
#include "request/rights.h"
#include "request/texts.h"

namespace orlune {

EventEntryWriter::EventEntryWriter(const ComponentState& state)
    : state_(&state),
      editLinkAttributes_("TITLE=\"{}\" {}", Attribute(LoadText(state, 210)),
                          StatusHandler(LoadText(state, 210))) {}

void EventEntryWriter::AddMonthEntry(Html& page, const OL_Event& event) const {
  if (AddIconAndTitle(page, event)) page.Add("</A>");
  page.Add("<BR>\r\n");
}

void EventEntryWriter::AddWeekEntry(Html& page, const OL_Event& event) const {
  if (AddIconAndTitle(page, event)) page.Add("</A>\r\n");
  page.Add("<BR><BR>");
}

void EventEntryWriter::AddDayEntry(Html& page, const OL_Event& event) const {
  const bool hasLink = AddEditLinkOpen(page, event);
  const Html colours = ColourStyleOpen(event.BackGround, event.ForeGround);
  page.Add("{}<P>{}<B>{}</B>", colours, TimeSpanLabel(state_->TimeFormat, event.BeginTime, event.EndTime),
           Content(event.EventName));
  if (!colours.IsEmpty()) page.Add("</FONT>");
  if (hasLink) page.Add("</A>");
  if (!event.Comments.empty()) page.Add("<BR>{}", Content(ReplaceAll(event.Comments, "\r\n", "<BR>")));
}

void EventEntryWriter::AddIcon(Html& page, const OL_Event& event) const {
  page.Add("<IMG SRC=\"{}{}\" ALT=\"{}\">", Attribute(state_->ImageDir),
           Attribute(EventTypeIcon(*state_, event.EventType)), Attribute(event.Comments));
}

bool EventEntryWriter::AddEditLinkOpen(Html& page, const OL_Event& event) const {
  if (!MayChangeEventsOf(*state_, event.Owner)) return false;
  page.Add("<A HREF=\"{}?p=e&id={}\" {}>", Attribute(state_->ScriptName), event.EventID, editLinkAttributes_);
  return true;
}

bool EventEntryWriter::AddIconAndTitle(Html& page, const OL_Event& event) const {
  AddIcon(page, event);
  const bool hasLink = AddEditLinkOpen(page, event);
  const Html colours = ColourStyleOpen(event.BackGround, event.ForeGround);
  page.Add("{}{}{}", colours, TimeSpanLabel(state_->TimeFormat, event.BeginTime, event.EndTime),
           Content(event.EventName));
  if (!colours.IsEmpty()) page.Add("</FONT>");
  return hasLink;
}

}  // namespace orlune
