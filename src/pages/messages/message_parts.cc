#include "pages/messages/message_parts.h"

#include "base/date_text.h"
#include "base/dates.h"
#include "html/links.h"
#include "request/component_state.h"

namespace orlune {

std::string SentDateText(const ComponentState& state, std::optional<DateTime> sent) {
  if (!sent) return "";
  return FormatShortDate(state.Surroundings->Regional, sent->Day) + " " +
         FormatTime(state.TimeFormat, sent->Time);
}

Html MessageToolbar(const ComponentState& state) {
  Html buttons = PageButton(state, "p=c", 163, "cal.gif");
  return buttons.Add(PageButton(state, "p=m", 159, "msg_list.gif"));
}

}  // namespace orlune
