#include "pages/calendar/event_entry.h"

#include "base/text.h"
#include "html/form_parts.h"
#include "html/links.h"
#include "pages/calendar/view_parts.h"
#include "request/texts.h"
#include "request/visit.h"

namespace orlune {

EventEntryWriter::EventEntryWriter(const Visit& visit)
    : visit_(&visit),
      editLinkAttributes_("TITLE=\"{}\" {}", Attribute(LoadText(visit, Text::kEditEvent)),
                          StatusHandler(LoadText(visit, Text::kEditEvent))) {}

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
  page.Add("{}<P>{}<B>{}</B>", colours,
           TimeSpanLabel(visit_->Context.Visitor.TimeFormat, event.BeginTime, event.EndTime),
           Content(event.EventName));
  if (!colours.IsEmpty()) page.Add("</FONT>");
  if (hasLink) page.Add("</A>");
  if (!event.Comments.empty()) page.Add("<BR>{}", Content(ReplaceAll(event.Comments, "\r\n", "<BR>")));
}

void EventEntryWriter::AddIcon(Html& page, const OL_Event& event) const {
  page.Add("<IMG SRC=\"{}{}\" ALT=\"{}\">", Attribute(visit_->Context.Hosting.ImageDir),
           Attribute(EventTypeIcon(*visit_, event.EventType)), Attribute(event.Comments));
}

bool EventEntryWriter::AddEditLinkOpen(Html& page, const OL_Event& event) const {
  if (!visit_->Context.Visitor.MayChangeEventsOf(event.Owner)) return false;
  page.Add("<A HREF=\"{}?p=e&id={}\" {}>", Attribute(visit_->Context.Hosting.ScriptName), event.EventID,
           editLinkAttributes_);
  return true;
}

bool EventEntryWriter::AddIconAndTitle(Html& page, const OL_Event& event) const {
  AddIcon(page, event);
  const bool hasLink = AddEditLinkOpen(page, event);
  const Html colours = ColourStyleOpen(event.BackGround, event.ForeGround);
  page.Add("{}{}{}", colours,
           TimeSpanLabel(visit_->Context.Visitor.TimeFormat, event.BeginTime, event.EndTime),
           Content(event.EventName));
  if (!colours.IsEmpty()) page.Add("</FONT>");
  return hasLink;
}

}  // namespace orlune
