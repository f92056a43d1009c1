#include "pages/calendar/event_entry.h"

#include <algorithm>

#include "base/text.h"
#include "html/form_parts.h"
#include "html/links.h"
#include "pages/calendar/view_parts.h"
#include "request/texts.h"

namespace orlune {

EventEntryWriter::EventEntryWriter(const PageContext& context, const GroupViewMembers& group)
    : context_(&context),
      iconOpen_("<IMG SRC=\"{}", Attribute(context.Hosting.ImageDir)),
      editLinkOpen_("<A HREF=\"{}?p=e&id=", Attribute(context.Hosting.ScriptName)),
      editLinkAttributes_("\" TITLE=\"{}\" {}>", Attribute(LoadText(context, Text::kEditEvent)),
                          StatusHandler(LoadText(context, Text::kEditEvent))) {
  const std::size_t memberCount = group.Calendars.size();
  colours_.reserve(memberCount + 1);
  for (std::size_t place = 0; place < memberCount; ++place)
    colours_.push_back(ColourStyleOpen(group.BackGroundAt(place), group.ForeGroundAt(place)));
  colours_.emplace_back();
}

void EventEntryWriter::AddMonthEntry(Html& page, const Occurrence& occurrence) const {
  if (AddIconAndTitle(page, occurrence)) page.Add("</A>");
  page.Add("<BR>\r\n");
}

void EventEntryWriter::AddWeekEntry(Html& page, const Occurrence& occurrence) const {
  if (AddIconAndTitle(page, occurrence)) page.Add("</A>\r\n");
  page.Add("<BR><BR>");
}

void EventEntryWriter::AddDayEntry(Html& page, const Occurrence& occurrence) const {
  const OL_Event& event = *occurrence.Event;
  const bool hasLink = AddEditLinkOpen(page, event);
  const Html& colours = ColoursOf(occurrence);
  page.Add("{}<P>", colours);
  AddTimeSpan(page, context_->Visitor.TimeFormat, event.BeginTime, event.EndTime);
  page.Add("<B>{}</B>", Content(event.EventName));
  if (!colours.IsEmpty()) page.Add("</FONT>");
  if (hasLink) page.Add("</A>");
  if (!event.Comments.empty()) page.Add("<BR>{}", Content(ReplaceAll(event.Comments, "\r\n", "<BR>")));
}

void EventEntryWriter::AddIcon(Html& page, const OL_Event& event) const {
  page.Add("{}{}\" ALT=\"{}\">", iconOpen_, Attribute(EventTypeIcon(*context_, event.EventType)),
           Attribute(event.Comments));
}

bool EventEntryWriter::AddEditLinkOpen(Html& page, const OL_Event& event) const {
  if (!context_->Visitor.MayChangeEventsOf(event.Owner)) return false;
  page.Add("{}{}{}", editLinkOpen_, event.EventID, editLinkAttributes_);
  return true;
}

bool EventEntryWriter::AddIconAndTitle(Html& page, const Occurrence& occurrence) const {
  const OL_Event& event = *occurrence.Event;
  AddIcon(page, event);
  const bool hasLink = AddEditLinkOpen(page, event);
  const Html& colours = ColoursOf(occurrence);
  page.Add(colours);
  AddTimeSpan(page, context_->Visitor.TimeFormat, event.BeginTime, event.EndTime);
  page.Add("{}", Content(event.EventName));
  if (!colours.IsEmpty()) page.Add("</FONT>");
  return hasLink;
}

const Html& EventEntryWriter::ColoursOf(const Occurrence& occurrence) const {
  return colours_[std::min(occurrence.Member, colours_.size() - 1)];
}

}  // namespace orlune
