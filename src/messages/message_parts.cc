#include "messages/message_parts.h"

#include "component/component_state.h"
#include "frame/date_text.h"
#include "frame/dates.h"
#include "frame/links.h"

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
