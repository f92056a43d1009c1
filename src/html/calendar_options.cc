#include "html/calendar_options.h"

#include "html/form_parts.h"

namespace orlune {

void AddCalendarOptions(Html& list, std::span<const Calendar> calendars,
                        const std::function<bool(std::string_view)>& isSelected, Markup ending) {
  for (const Calendar& calendar : calendars) {
    list.Add("<OPTION VALUE=\"{}\"{}>{}{}{}{}", Attribute(calendar.Name),
             SelectedWhen(isSelected(calendar.Name)), calendar.IsGroup ? Markup("[") : Markup(""),
             OptionLabel(calendar.FriendlyName), calendar.IsGroup ? Markup("]") : Markup(""), ending);
  }
}

}  // namespace orlune
