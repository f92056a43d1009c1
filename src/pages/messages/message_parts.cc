#include "pages/messages/message_parts.h"

#include "base/date_text.h"
#include "base/dates.h"
#include "html/links.h"
#include "html/page_frame.h"
#include "request/texts.h"
#include "request/visit.h"

namespace orlune {

std::string SentDateText(const PageContext& context, std::optional<DateTime> sent) {
  if (!sent) return "";
  return FormatShortDate(context.Regional, sent->Day) + " " +
         FormatTime(context.Visitor.TimeFormat, sent->Time);
}

Html MessageToolbar(const PageContext& context) {
  Html buttons = PageButton(context, "p=c", Text::kViewCalendar, "cal.gif");
  return buttons.Add(PageButton(context, "p=m", Text::kMessageList, "msg_list.gif"));
}

void RefuseMissingMessage(Visit& visit) {
  WritePage(visit, ErrorPage(visit.Context, LoadText(visit.Context, Text::kNoRights)));
}

}  // namespace orlune
