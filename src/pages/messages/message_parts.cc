#include "pages/messages/message_parts.h"

#include "base/date_text.h"
#include "base/dates.h"
#include "html/links.h"
#include "request/visit.h"

namespace orlune {

std::string SentDateText(const Visit& visit, std::optional<DateTime> sent) {
  if (!sent) return "";
  return FormatShortDate(visit.Context.Regional, sent->Day) + " " +
         FormatTime(visit.Context.Visitor.TimeFormat, sent->Time);
}

Html MessageToolbar(const Visit& visit) {
  Html buttons = PageButton(visit, "p=c", Text::kViewCalendar, "cal.gif");
  return buttons.Add(PageButton(visit, "p=m", Text::kMessageList, "msg_list.gif"));
}

}  // namespace orlune
